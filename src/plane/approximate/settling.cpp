#include "plane/approximate/settling.h"

#include <algorithm>

#include "core/median.h"
#include "plane/approximate/candidates.h"

namespace brenu::approximate {

// How far the line between two points is off along a direction: misfit = e (P_to - P_from) -
// wanted.
struct Settling::Equation {
  Slot from, to;
  Position direction;  // e, of unit length
  double misfit;       // metres
  double sigma;        // metres
};

Settling::Settling(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy, Places& places)
    : m_net(net.layout), m_rays(rays), m_accuracy(accuracy), m_places(places) {
  m_number.Assign(m_net.Slots().Size(), -1);
}

std::vector<Settling::Equation> Settling::MakeEquations() const {
  std::vector<Equation> equations;
  for (const Slot from : m_places.Points()) {
    for (const SightNo k : m_net.SightsFrom(from)) {
      const Slot to = m_net.At(k).target;
      const Ray& ray = m_rays[k];
      if (!m_places.IsPlaced(to) || (m_number[from] < 0 && m_number[to] < 0)) continue;
      const Position line = m_places.At(to) - m_places.At(from);
      const double length = LengthOf(line);
      if (!(length > 0.0)) continue;
      Position along = (1.0 / length) * line;
      if (ray.HasReading() && m_places.IsOriented(from)) {
        along = Polar(1.0, m_places.Orientation(from) + ray.reading);
        const Position across = {-along.y, along.x};
        // The circle itself is known no better than a direction.
        const double sigma = 2.0 * m_accuracy.direction * length + 1e-4;
        equations.push_back({from, to, across, Dot(across, line), sigma});
      }
      if (ray.HasDistance()) {
        equations.push_back(
            {from, to, along, Dot(along, line) - ray.distance, m_accuracy.Distance(ray.distance)});
      }
    }
  }
  return equations;
}

namespace {

// Places that contradict nothing by much are good enough to begin an adjustment with, which costs
// no more from there; what else there is the weights have to find.
bool IsSettled(int round, double largestRatio, double scale) {
  constexpr double kFitsAtOnce = 200.0;  // standard errors
  constexpr double kFits = 10.0;
  return largestRatio < (round == 0 ? kFitsAtOnce : kFits * scale);
}

}  // namespace

bool Settling::Solve(int round) {
  if (m_unknownPoints.empty()) return false;
  const std::vector<Equation> equations = MakeEquations();
  if (equations.empty()) return false;
  std::vector<double> ratios;
  ratios.reserve(equations.size());
  for (const Equation& e : equations) ratios.push_back(std::fabs(e.misfit) / e.sigma);
  const double scale = RobustScale(ratios);
  if (IsSettled(round, *std::max_element(ratios.begin(), ratios.end()), scale)) return false;

  if (!m_isAnalysed) {
    UnknownPattern pattern = PointPattern(static_cast<std::int32_t>(m_unknownPoints.size()), 2);
    for (const Equation& e : equations) pattern.Connect(m_number[e.from], m_number[e.to]);
    m_normal.SetPattern(pattern);
    m_isAnalysed = true;
  }
  m_normal.Reset();
  for (const Equation& e : equations) {
    const double ratio = std::fabs(e.misfit) / ((round <= kTurn ? 1.0 : scale) * e.sigma);
    // First without judging, since the places may be wrong; then as in the least sum of amounts;
    // then fading out.
    const double fade = round == 0       ? 1.0
                        : round <= kTurn ? 1.0 / std::max(1.0, ratio / 1.5)
                                         : 1.0 / (1.0 + ratio * ratio / 9.0);
    Term terms[4];
    std::size_t count = 0;
    for (const auto& [slot, sign] : {std::pair(e.from, -1.0), std::pair(e.to, 1.0)}) {
      const std::int32_t number = m_number[slot];
      if (number < 0) continue;
      terms[count++] = {2 * number, sign * e.direction.x};
      terms[count++] = {2 * number + 1, sign * e.direction.y};
    }
    m_normal.Add({terms, count}, fade / (e.sigma * e.sigma), e.misfit);
  }
  // What little holds a point must not break the solution: it stays near its place.
  constexpr double kHolding = 1e-6;  // a standard error of a kilometre
  for (std::size_t i = 0; i < m_unknownPoints.size(); ++i) {
    m_normal.Hold(static_cast<std::int32_t>(2 * i), kHolding);
    m_normal.Hold(static_cast<std::int32_t>(2 * i + 1), kHolding);
  }
  if (!m_normal.Solve()) return false;
  const auto x = m_normal.Solution();
  for (std::size_t i = 0; i < m_unknownPoints.size(); ++i) {
    if (!std::isfinite(x[2 * i]) || !std::isfinite(x[2 * i + 1])) return false;
  }
  for (std::size_t i = 0; i < m_unknownPoints.size(); ++i) {
    const Slot slot = m_unknownPoints[i];
    m_places.Place(slot, m_places.At(slot) + Position{x[2 * i], x[2 * i + 1]});
  }
  return true;
}

void Settling::TurnCircles() {
  std::vector<double> angles;
  std::vector<double> lengths;
  for (const Slot station : m_places.OrientedStations()) {
    if (!m_places.IsPlaced(station)) continue;
    angles.clear();
    lengths.clear();
    for (const SightNo k : m_net.SightsFrom(station)) {
      const Slot target = m_net.At(k).target;
      if (!m_rays[k].HasReading() || !m_places.IsPlaced(target)) continue;
      const Position line = m_places.At(target) - m_places.At(station);
      if (!(LengthOf(line) > 0.0)) continue;
      angles.push_back(AngleOf(line) - m_rays[k].reading);
      lengths.push_back(LengthOf(line));
    }
    if (angles.empty()) continue;
    m_places.Orient(station, CommonOrientation(angles, lengths, m_accuracy));
  }
}

}  // namespace brenu::approximate
