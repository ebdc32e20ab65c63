#include "fieldbook/face_means.h"

#include <cmath>
#include <utility>
#include <vector>

#include "core/angles.h"
#include "fieldbook/distance_steps.h"

namespace brenu {

namespace {

// Faces that differ by more were hardly pointed at the same target.
constexpr double kLargeFaceError = 90.0 / kRho;

using Part = std::optional<double> BookSight::*;

std::optional<double> PartOf(const BookSight* sight, Part part) {
  return sight == nullptr ? std::nullopt : sight->*part;
}

std::optional<double> Mean(std::optional<double> a, std::optional<double> b) {
  if (a && b) return (*a + *b) / 2.0;
  return a ? a : b;
}

// From 0 to 180 degrees, also where the mark of the face says otherwise.
std::optional<double> ZenithOf(const BookSight* sight) {
  const std::optional<double> zenith = PartOf(sight, &BookSight::zenith);
  return zenith.value_or(0.0) > kPi ? kTwoPi - *zenith : zenith;
}

// Slope distance with what the file says that it lacks.
std::optional<double> SlopeOf(const BookSight* sight, const SetLog& log) {
  if (sight == nullptr || !sight->slope) return std::nullopt;
  const double raw = *sight->slope;
  const double slope = raw * (1.0 + sight->ppm * 1e-6) + sight->prismConstant;
  if (slope != raw) log.Add(Step::kInstrumentScale, raw, slope);
  return slope;
}

// Instrument minus target, of one face.
std::optional<double> HeightsOf(const BookSight* sight) {
  if (sight == nullptr || !sight->instrumentHeight || !sight->targetHeight) return std::nullopt;
  return *sight->instrumentHeight - *sight->targetHeight;
}

class FaceMeans {
 public:
  FaceMeans(const BookSight* face1, const BookSight* face2, const ReductionOptions& options,
            ReductionNotes& notes)
      : m_1(face1), m_2(face2), m_options(options), m_notes(notes) {}

  SetValue Mean() {
    m_value.line = (m_1 != nullptr ? m_1 : m_2)->line;
    MeanDirection();
    MeanZenith();
    MeanDistance();
    m_value.azimuth =
        brenu::Mean(PartOf(m_1, &BookSight::azimuth), PartOf(m_2, &BookSight::azimuth));
    if (m_options.centre) Centre();
    return m_value;
  }

 private:
  void MeanDirection() {
    const auto first = PartOf(m_1, &BookSight::direction);
    auto second = PartOf(m_2, &BookSight::direction);
    if (second) second = FullCircle(*second + kPi);
    m_value.direction = first ? first : second;
    if (!first || !second) return;
    const double collimation = HalfCircle(*second - *first) / 2.0;
    Judge(collimation);
    m_value.direction = MeanAngle(*first, *second);
    m_notes.log.Add(Step::kFacesDirection, *first, collimation, *m_value.direction);
  }

  void MeanZenith() {
    const auto first = ZenithOf(m_1);
    const auto second = ZenithOf(m_2);
    m_zenith = brenu::Mean(first, second);
    if (!first || !second) return;
    Judge((*second - *first) / 2.0);
    m_notes.log.Add(Step::kFacesZenith, *first, *m_zenith);
  }

  void Judge(double error) const {
    if (std::fabs(error) <= kLargeFaceError) return;
    Tell(BRENU_FACES_DIFFER, {static_cast<double>(m_notes.log.place.set), error * kRho});
  }

  void Tell(Code code, std::vector<double> values) const {
    const LogEntry& place = m_notes.log.place;
    m_notes.findings.push_back({code,
                                Severity::kWarning,
                                m_value.line,
                                {},
                                {m_notes.names[place.station], m_notes.names[place.target]},
                                std::move(values)});
  }

  void MeanDistance() {
    auto slope = brenu::Mean(SlopeOf(m_1, m_notes.log), SlopeOf(m_2, m_notes.log));
    const auto stored =
        brenu::Mean(PartOf(m_1, &BookSight::horizontal), PartOf(m_2, &BookSight::horizontal));
    if (slope && !m_zenith && !stored) Tell(BRENU_SLOPE_WITHOUT_ZENITH, {});
    if (slope) slope = CorrectedSlope(*slope, m_options, m_notes.log);
    std::optional<double> horizontal = stored;
    if (slope && m_zenith) {
      horizontal = HorizontalOf(*slope, *m_zenith, m_options, m_notes.log);
      const auto heights = brenu::Mean(HeightsOf(m_1), HeightsOf(m_2));
      m_value.lacksHeights = !heights;
      if (heights) {
        m_value.slope = slope;
        m_value.height = HeightOf(*slope, *m_zenith, m_options) + *heights;
        m_notes.log.Add(Step::kHeightDifference, *slope * std::cos(*m_zenith), *m_value.height);
      }
    }
    if (!horizontal) return;
    m_value.distance = ProjectedDistance(*horizontal, m_options, m_notes.log);
  }

  // From the prism to the point: along the line by what it stood in front, across it by what it
  // stood right of the point.
  void Centre() {
    const auto isBeside = [](const BookSight* sight) {
      return sight != nullptr && (sight->eccentric.front != 0.0 || sight->eccentric.right != 0.0);
    };
    if (!isBeside(m_1) && !isBeside(m_2)) return;
    const Eccentric& prism = (isBeside(m_1) ? m_1 : m_2)->eccentric;
    if (!m_value.distance) {
      if (prism.right == 0.0) return;
      m_value.direction.reset();
      return Tell(BRENU_ECCENTRIC_WITHOUT_DISTANCE, {});
    }
    const double along = *m_value.distance + prism.front;
    const double distance = std::hypot(along, prism.right);
    m_notes.log.Add(Step::kEccentricDistance, *m_value.distance, distance);
    m_value.distance = distance;
    if (!m_value.direction) return;
    const double turn = -std::atan2(prism.right, along);
    const double direction = FullCircle(*m_value.direction + turn);
    if (turn != 0.0)
      m_notes.log.Add(Step::kEccentricDirection, *m_value.direction, turn, direction);
    m_value.direction = direction;
  }

  const BookSight* m_1;
  const BookSight* m_2;
  const ReductionOptions& m_options;
  ReductionNotes& m_notes;
  std::optional<double> m_zenith;
  SetValue m_value;
};

}  // namespace

double MeanAngle(double first, double second) {
  return FullCircle(first + HalfCircle(second - first) / 2.0);
}

SetValue MeanOfFaces(const BookSight* face1, const BookSight* face2,
                     const ReductionOptions& options, ReductionNotes& notes) {
  if (!options.averageFaces && face1 != nullptr) face2 = nullptr;
  return FaceMeans(face1, face2, options, notes).Mean();
}

}  // namespace brenu
