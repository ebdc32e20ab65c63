#include "plane/plane_adjustment.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/parallel.h"
#include "plane/approximate_coordinates.h"
#include "plane/iteration.h"

namespace brenu {

namespace {
// Known points stay unknowns of the system and are held by this addition to the diagonal.
constexpr double kHoldingWeight = 1e20;
}  // namespace

PlaneAdjustment::PlaneAdjustment(std::shared_ptr<const PlaneNet> net,
                                 std::int32_t mostPackedUnknowns)
    : m_net(std::move(net)),
      m_param(m_net->param),
      m_coords(StartingCoordinates(*m_net)),
      m_obs(m_net->layout),
      m_normal(mostPackedUnknowns) {}

Outcome PlaneAdjustment::CalcApproxCoordinates() {
  if (m_isPlacedOnly) return {};
  if (Outcome placed = PlaceByPasses(m_net->layout, m_coords); !placed.ok) return placed;
  KeepApproximateCoordinates();
  m_isPlacedOnly = true;
  return {};
}

void PlaneAdjustment::KeepApproximateCoordinates() {
  m_approximate.Clear();
  m_approximate.Reserve(m_net->points.Size());
  for (const PointNo i : m_net->layout.Points()) {
    const PlaneResult& working = m_coords[m_net->layout.SlotOf(i)];
    const PointData& stored = m_net->points[i];
    m_approximate.Add(HasCoordinates(working) ? Position{working.x, working.y}
                                              : Position{stored.x, stored.y});
  }
}

void PlaneAdjustment::SetCoordinates(Slot slot, const Position& position) {
  m_coords[slot].x = position.x;
  m_coords[slot].y = position.y;
}

Outcome PlaneAdjustment::Adjust() {
  const ThreadTeam team;
  if (Outcome reached = CalcApproxCoordinates(); !reached.ok) return reached;
  m_isPlacedOnly = false;
  Outcome settled = IterateUntilSettled([this] { return BuildNormals(); },
                                        [this] {
                                          HoldKnownPoints();
                                          return SolveAndUpdate();
                                        });
  if (!settled.ok) return settled;
  CountRedundancy(OrientationCount());
  m_sigma0 = std::sqrt(CalcResiduals() / m_redundancy);
  CalcPointPrecision();
  return ExplainResult();
}

void PlaneAdjustment::HoldKnownPoints() {
  for (std::int32_t i = 0; i < 2 * m_net->layout.ControlCount(); ++i) {
    m_normal.Hold(i, kHoldingWeight);
  }
}

double PlaneAdjustment::SolveAndUpdate() {
  if (!m_normal.Solve()) return kPassFailed;
  const NetworkLayout& net = m_net->layout;
  const auto x = m_normal.Solution();
  double largest = 0.0;
  const PointNo first = m_firstUnknownPoint;
  const auto coordinates = 2 * static_cast<std::size_t>(net.PointCount() - first.Number());
  for (const double correction : x.first(coordinates)) {
    largest = std::max(largest, std::fabs(correction));
  }
  for (const Slot slot : net.Slots()) {
    const PointNo point = net.PointOf(slot);
    if (point < first) continue;
    const auto unknown = static_cast<std::size_t>(UnknownOf(slot));
    m_coords[slot].x += x[unknown];
    m_coords[slot].y += x[unknown + 1];
  }
  return largest;
}

// What the results are worth; they stand all the same.
Outcome PlaneAdjustment::ExplainResult() const {
  Outcome outcome;
  const NetworkLayout& net = m_net->layout;
  bool areFinite = true;
  for (const PointNo i : net.Points()) {
    const PlaneResult& point = m_coords[net.SlotOf(i)];
    areFinite = areFinite && std::isfinite(point.x) && std::isfinite(point.y);
  }
  if (!areFinite) {
    outcome.findings.push_back(ExplainNotFinite());
  } else if (net.NewPointCount() > 0 && m_redundancy > 0 && !std::isfinite(m_sigma0)) {
    outcome.findings.push_back(Error(BRENU_PLANE_RESIDUALS_TOO_LARGE));
  } else if (!m_turnedDirection.IsNone()) {
    const Sight& s = net.At(m_turnedDirection);
    outcome.findings.push_back(Error(
        BRENU_DIRECTION_TURNED, {net.Names().NameAt(s.station), net.Names().NameAt(s.target)}));
  }
  return outcome;
}

// Mostly a line between points that lie at the same place.
Finding PlaneAdjustment::ExplainNotFinite() const {
  const NetworkLayout& net = m_net->layout;
  for (const Sight& s : net.Sights()) {
    const PointNo from = net.PointOf(s.station);
    const PointNo to = net.PointOf(s.target);
    if (!m_approximate.Has(from) || !m_approximate.Has(to)) continue;
    const Position& a = m_approximate[from];
    const Position& b = m_approximate[to];
    if (std::hypot(b.x - a.x, b.y - a.y) != 0.0) continue;
    return Error(BRENU_LINE_WITHOUT_LENGTH,
                 {net.Names().NameAt(s.station), net.Names().NameAt(s.target)});
  }
  return Error(BRENU_COORDINATES_NOT_FINITE);
}

}  // namespace brenu
