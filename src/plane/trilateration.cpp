#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "plane/plane_net.h"

namespace brenu {

namespace {
// Unplaced points stand at (0, 0): nearer to that than this counts as unplaced.
constexpr double kUnplaced = 1e-7;
}  // namespace

bool PlaneNet::IsPlaced(std::int32_t point) const {
  return std::fabs(m_points[static_cast<std::size_t>(point)].x) >= kUnplaced;
}

void PlaneNet::UnplacePoints() {
  for (auto i = static_cast<std::size_t>(m_layout->ControlCount()); i < m_points.size(); ++i) {
    m_points[i].x = 0.0;
    m_points[i].y = 0.0;
  }
}

std::uint32_t PlaneNet::PlacePoint(bool right, const NamedCircle& first, const NamedCircle& second,
                                   std::string_view name) {
  const auto remaining = [this] { return static_cast<std::uint32_t>(m_unplacedCount); };
  const auto solutions = Intersect(first.circle, second.circle);
  const PointData* from = FindPoint(IndexOfPoint(first.name));
  const PointData* to = FindPoint(IndexOfPoint(second.name));
  if (!solutions || from == nullptr || to == nullptr) return remaining();
  for (const Position& s : {solutions->first, solutions->second}) {
    const double side = SideOf({from->x, from->y}, {to->x, to->y}, s);
    if (right ? !(side >= 0.0) : !(side < 0.0)) continue;
    const std::int32_t point = IndexOfPoint(name);
    PointData& placed =
        point < 0 ? m_strayPoint.emplace() : m_points[static_cast<std::size_t>(point)];
    placed.x = s.x;
    placed.y = s.y;
    --m_unplacedCount;
    break;
  }
  return remaining();
}

// The measured distances between a point and placed ones, in either direction, in name order of
// the latter.
std::vector<NamedCircle> PlaneNet::CirclesThrough(std::int32_t slot) const {
  const NetworkLayout& net = *m_layout;
  std::vector<std::pair<std::int32_t, double>> measured;  // other end, length
  const auto add = [&](std::int32_t other, const ObsData& obs) {
    const std::int32_t point = net.PointOf(other);
    if (point >= 0 && other != slot && HasDistance(obs) && IsPlaced(point)) {
      measured.emplace_back(other, obs.distance);
    }
  };
  for (const std::int32_t k : net.SightsTo(slot)) {
    const Sight& s = net.Sights()[static_cast<std::size_t>(k)];
    add(s.station, s.obs);
  }
  const auto range = net.SightsFrom(slot);
  for (std::int32_t k = range.first; k < range.end; ++k) {
    const Sight& s = net.Sights()[static_cast<std::size_t>(k)];
    add(s.target, s.obs);
  }
  // Of a line measured both ways the distance observed at the placed point counts.
  std::stable_sort(measured.begin(), measured.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<NamedCircle> circles;
  std::int32_t last = -1;
  for (const auto& [other, length] : measured) {
    if (other == last) continue;
    last = other;
    const PointData& centre = m_points[static_cast<std::size_t>(net.PointOf(other))];
    circles.push_back({net.Names().NameAt(other).c_str(), {{centre.x, centre.y}, length}});
  }
  return circles;
}

std::optional<Placement> PlaneNet::BestPlacement(std::int32_t slot) const {
  const std::int32_t point = m_layout->PointOf(slot);
  if (point < m_layout->ControlCount() || IsPlaced(point)) return std::nullopt;
  const std::vector<NamedCircle> circles = CirclesThrough(slot);
  std::optional<Placement> best;
  for (std::size_t i = 0; i < circles.size(); ++i) {
    for (std::size_t j = i + 1; j < circles.size(); ++j) {
      const double quality = IntersectionQuality(circles[i].circle, circles[j].circle);
      if (quality > (best ? best->quality : 0.0)) {
        best = Placement{m_layout->Names().NameAt(slot), circles[i], circles[j], quality};
      }
    }
  }
  return best;
}

std::optional<Placement> PlaneNet::NextPlacement(std::string_view name) const {
  if (m_layout->PointCount() - m_layout->ControlCount() < 1 || m_unplacedCount < 1) {
    return std::nullopt;
  }
  if (!name.empty()) {
    const std::int32_t slot = m_layout->Names().Find(name);
    return slot < 0 ? std::nullopt : BestPlacement(slot);
  }
  std::optional<Placement> best;
  for (std::int32_t slot = 0; slot < m_layout->SlotCount(); ++slot) {
    std::optional<Placement> placement = BestPlacement(slot);
    if (placement && (!best || placement->quality > best->quality)) best = std::move(placement);
  }
  return best;
}

bool PlaneNet::FinishTrilateration() {
  for (std::int32_t i = m_layout->ControlCount(); i < m_layout->PointCount(); ++i) {
    if (!IsPlaced(i)) return false;
  }
  if (!PrepareAdj()) return false;
  for (std::int32_t i = m_net->ControlCount(); i < m_net->PointCount(); ++i) {
    PlaneResult& working = m_coords[static_cast<std::size_t>(m_net->SlotOf(i))];
    working.x = m_points[static_cast<std::size_t>(i)].x;
    working.y = m_points[static_cast<std::size_t>(i)].y;
  }
  DeriveDirections();
  return true;
}

// Every measured line gets the grid azimuth of its end points as direction.
void PlaneNet::DeriveDirections() {
  m_obs.directions.clear();
  for (const PlaneObs& o : m_obs.distances) {
    if (m_net->PointOf(o.from) < 0 || m_net->PointOf(o.to) < 0) continue;
    m_obs.directions.push_back({o.sight, o.from, o.to, DirectionCoefficients(o.from, o.to).value});
  }
  m_obs.sets.clear();
}

}  // namespace brenu
