#include "plane/plane_net.h"

#include <cmath>
#include <utility>

#include "core/angles.h"
#include "plane/marker.h"

namespace brenu {

namespace {
bool AcceptAll(const ObsData&) { return true; }
}  // namespace

void PlaneNet::Fill(std::vector<PointData> points, std::int32_t knownPointCount,
                    const ObservationMap& observations, const AdjParam& param) {
  m_layout = std::make_shared<NetworkLayout>(points, knownPointCount, observations, AcceptAll);
  m_points = std::move(points);
  m_orientationCount = static_cast<std::int32_t>(observations.size());
  m_param = param;
  m_unplacedCount = m_layout->PointCount() - knownPointCount;
  m_strayPoint.reset();
}

bool PlaneNet::PrepareAdj() {
  if (m_points.empty() || m_orientationCount == 0) return false;  // the last results stay
  m_coords.clear();  // should memory end on the way, there are no results
  m_net = m_layout;
  m_obs = {};
  m_normal.Clear();
  m_firstUnknownPoint = 0;
  m_directionsDerived = false;
  m_redundancy = 0;
  m_sigma0 = 0.0;
  constexpr PlaneResult kUnreached = {kNoCoordinate, kNoCoordinate, 0, 0, 0, 0, 0, 0};
  m_coords.assign(static_cast<std::size_t>(m_net->SlotCount()), kUnreached);
  for (std::int32_t i = 0; i < m_net->PointCount(); ++i) {
    PlaneResult& working = m_coords[static_cast<std::size_t>(m_net->SlotOf(i))];
    const PointData& point = m_points[static_cast<std::size_t>(i)];
    const bool known = i < m_net->ControlCount();
    working.x = known ? point.x : kNoCoordinate;
    working.y = known ? point.y : kNoCoordinate;
  }
  m_obs = ObservationTables(*m_net);
  return true;
}

bool PlaneNet::HasCoordinates(std::int32_t slot) const {
  return m_coords[static_cast<std::size_t>(slot)].x < kNoCoordinateLimit;
}

void PlaneNet::WriteBackCoordinates() {
  for (std::size_t i = 0; i < m_points.size(); ++i) {
    const std::int32_t slot = m_net->SlotOf(static_cast<std::int32_t>(i));
    const PlaneResult& working = m_coords[static_cast<std::size_t>(slot)];
    if (working.x >= kNoCoordinateLimit) continue;
    m_points[i].x = working.x;
    m_points[i].y = working.y;
  }
}

bool PlaneNet::IsReached(std::string_view name) const {
  const std::int32_t slot = m_net->Names().Find(name);
  return slot >= 0 && static_cast<std::size_t>(slot) < m_coords.size() && HasCoordinates(slot);
}

bool PlaneNet::IsControl(std::string_view name) const {
  const std::int32_t point = m_net->IndexOfPoint(name);
  return point >= 0 && point < m_net->ControlCount();
}

const PointData* PlaneNet::FindPoint(std::int32_t number) const {
  if (number == -1 && m_strayPoint) return &*m_strayPoint;
  const auto i = static_cast<std::size_t>(number);
  return number >= 0 && i < m_points.size() ? &m_points[i] : nullptr;
}

std::int32_t PlaneNet::UnknownOf(std::int32_t slot) const {
  return 2 * (m_net->PointOf(slot) - m_firstUnknownPoint);
}

// a = atan2(dy, dx) has the derivatives (-dy, dx) rho / s^2.
LineEquation PlaneNet::DirectionCoefficients(std::int32_t from, std::int32_t to) const {
  const PlaneResult& a = m_coords[static_cast<std::size_t>(from)];
  const PlaneResult& b = m_coords[static_cast<std::size_t>(to)];
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double s2 = dx * dx + dy * dy;
  return {PositiveAngle(std::atan2(dy, dx)), UnknownOf(from), UnknownOf(to), -kRho * dy / s2,
          kRho * dx / s2};
}

// s = sqrt(dx^2 + dy^2) has the derivatives (dx, dy) / s.
LineEquation PlaneNet::DistanceCoefficients(std::int32_t from, std::int32_t to) const {
  const PlaneResult& a = m_coords[static_cast<std::size_t>(from)];
  const PlaneResult& b = m_coords[static_cast<std::size_t>(to)];
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double s = CalcDistance(a.x, a.y, b.x, b.y);
  return {s, UnknownOf(from), UnknownOf(to), dx / s, dy / s};
}

}  // namespace brenu
