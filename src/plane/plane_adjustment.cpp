#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "plane/iteration.h"
#include "plane/plane_net.h"

namespace brenu {

namespace {
// Known points stay unknowns of the system and are held by this addition to the diagonal.
constexpr double kHoldingWeight = 1e20;
}  // namespace

bool PlaneNet::Adjust() {
  if (!CalcApproxCoordinates()) return false;
  const bool solved = IterateUntilSettled([this] {
    if (!BuildNormals()) return kPassFailed;
    HoldKnownPoints();
    return SolveAndUpdate();
  });
  if (!solved) return false;
  CountRedundancy(OrientationCount());
  m_sigma0 = std::sqrt(CalcResiduals() / m_redundancy);
  CalcPointPrecision();
  return true;
}

bool PlaneNet::HasUnknownName() const {
  const auto isUnknown = [this](const PlaneObs& o) {
    return o.inUse && (m_net->PointOf(o.from) < 0 || m_net->PointOf(o.to) < 0);
  };
  return std::any_of(m_obs.directions.begin(), m_obs.directions.end(), isUnknown) ||
         std::any_of(m_obs.distances.begin(), m_obs.distances.end(), isUnknown) ||
         std::any_of(m_obs.azimuths.begin(), m_obs.azimuths.end(), isUnknown);
}

// The orientation unknowns follow the coordinates, one a set.  Sets may lose their last direction
// in use; their unknown then stays without equations and is held, so that the pattern never
// changes.
void PlaneNet::NumberOrientations() {
  std::int32_t unknown = 2 * m_net->PointCount();
  for (DirectionSet& set : m_obs.sets) {
    const bool used = m_obs.HasDirectionInUse(set);
    set.orientation = used ? unknown : -1;
    if (!used) m_normal.Hold(unknown, 1.0);
    ++unknown;
  }
}

bool PlaneNet::BuildNormals() {
  if (HasUnknownName()) return false;
  if (!m_normal.HasPattern()) AnalysePattern();
  m_normal.Reset();
  NumberOrientations();
  for (const std::int32_t k : m_setOrder) AddDirectionSet(m_obs.sets[static_cast<std::size_t>(k)]);
  for (const std::int32_t k : m_distanceOrder) {
    const PlaneObs& o = m_obs.distances[static_cast<std::size_t>(k)];
    if (!o.inUse) continue;
    const LineEquation line = DistanceCoefficients(o.from, o.to);
    const double error = DistanceError(o.observed);
    m_normal.Add(line.Terms(), 1.0 / (error * error), line.value - o.observed);
  }
  for (const PlaneObs& o : m_obs.azimuths) {
    if (!o.inUse) continue;
    const LineEquation line = DirectionCoefficients(o.from, o.to);
    // The reduced observation stays in radians while the coefficients are in arc-seconds: an
    // azimuth stiffens the network near its approximate value.  The system defines it so.
    m_normal.Add(line.Terms(), 1.0 / (m_param.MO * m_param.MO), line.value - o.observed);
  }
  return true;
}

void PlaneNet::AddDirectionSet(const DirectionSet& set) {
  const auto begin = m_obs.directions.begin() + set.first;
  const auto end = m_obs.directions.begin() + set.end;
  // The approximate orientation comes from the first direction in use (from the first of all in a
  // set without any, so that its residuals still say something).
  auto reference = std::find_if(begin, end, [](const PlaneObs& o) { return o.inUse; });
  if (reference == end) reference = begin;
  const double orientation = PositiveAngle(
      DirectionCoefficients(reference->from, reference->to).value - reference->observed);

  const double weight = 1.0 / (m_param.MO * m_param.MO);
  for (auto o = begin; o != end; ++o) {
    LineEquation line = DirectionCoefficients(o->from, o->to);
    // Not reduced any further: the observations are expected to agree with the approximate values.
    o->residual = (PositiveAngle(line.value - o->observed) - orientation) * kRho;
    if (!o->inUse) continue;
    m_normal.Add(line.TermsWithOrientation(set.orientation), weight, o->residual);
  }
}

void PlaneNet::HoldKnownPoints() {
  for (std::int32_t i = 0; i < 2 * m_net->ControlCount(); ++i) m_normal.Hold(i, kHoldingWeight);
}

double PlaneNet::SolveAndUpdate() {
  if (!m_normal.Solve()) return kPassFailed;
  const auto x = m_normal.Solution();
  double largest = 0.0;
  const std::int32_t firstPoint = m_firstUnknownPoint;
  const auto coordinates = 2 * static_cast<std::size_t>(m_net->PointCount() - firstPoint);
  for (const double correction : x.first(coordinates)) {
    largest = std::max(largest, std::fabs(correction));
  }
  for (std::int32_t slot = 0; slot < m_net->SlotCount(); ++slot) {
    const std::int32_t point = m_net->PointOf(slot);
    if (point < firstPoint) continue;
    const auto unknown = 2 * static_cast<std::size_t>(point - firstPoint);
    m_coords[static_cast<std::size_t>(slot)].x += x[unknown];
    m_coords[static_cast<std::size_t>(slot)].y += x[unknown + 1];
  }
  return largest;
}

}  // namespace brenu
