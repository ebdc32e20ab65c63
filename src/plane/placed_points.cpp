#include "plane/placed_points.h"

#include <algorithm>
#include <cmath>

namespace brenu {

namespace {

// Unplaced points stand at (0, 0); X alone tells, so that one nearer to 0 than this is unplaced.
constexpr double kUnplaced = 1e-7;

// Of a point with very many distances no more circles than these are tried against each other.
constexpr std::size_t kMostCircles = 200;

// Evenly chosen, so that circles from all sides stay.
void Thin(std::vector<NamedCircle>& circles) {
  if (circles.size() <= kMostCircles) return;
  for (std::size_t k = 0; k < kMostCircles; ++k) {
    circles[k] = circles[k * circles.size() / kMostCircles];
  }
  circles.resize(kMostCircles);
}

}  // namespace

PlacedPoints::PlacedPoints(std::shared_ptr<const PlaneNet> net) : m_net(std::move(net)) {
  m_positions.Reserve(m_net->points.Size());
  for (const PointData& point : m_net->points) m_positions.Add({point.x, point.y});
  m_unplacedCount = m_net->layout.NewPointCount();
}

void PlacedPoints::SetPositions(Table<PointNo, Position> positions) {
  m_positions = std::move(positions);
  m_isRanked = false;
}

std::optional<PointData> PlacedPoints::FindPoint(std::int32_t number) const {
  PointData found{};
  Position position{};
  if (number == -1 && m_stray) {
    position = *m_stray;
  } else if (const PointNo point(number); m_positions.Has(point)) {
    found = m_net->points[point];
    position = m_positions[point];
  } else {
    return std::nullopt;
  }
  found.x = position.x;
  found.y = position.y;
  return found;
}

void PlacedPoints::UnplacePoints() {
  for (const PointNo i : m_net->layout.NewPoints()) m_positions[i] = {0.0, 0.0};
  m_isRanked = false;
}

bool PlacedPoints::IsPlaced(PointNo point) const {
  return std::fabs(m_positions[point].x) >= kUnplaced;
}

bool PlacedPoints::PlacePoint(bool right, const NamedCircle& first, const NamedCircle& second,
                              std::string_view name) {
  const auto solutions = Intersect(first.circle, second.circle);
  const auto from = FindPoint(m_net->layout.IndexOfPoint(first.name).Number());
  const auto to = FindPoint(m_net->layout.IndexOfPoint(second.name).Number());
  if (!solutions || !from || !to) return false;
  for (const Position& s : {solutions->first, solutions->second}) {
    const double side = SideOf({from->x, from->y}, {to->x, to->y}, s);
    if (right ? !(side >= 0.0) : !(side < 0.0)) continue;
    MoveTo(m_net->layout.IndexOfPoint(name), s);
    --m_unplacedCount;
    return true;
  }
  return false;
}

void PlacedPoints::MoveTo(PointNo point, const Position& position) {
  if (point.IsNone()) {
    m_stray = position;
    return;
  }
  m_positions[point] = position;
  if (!m_isRanked) return;
  Rank(point);
  for (const PointNo other : Neighbours(m_net->layout.SlotOf(point))) Rank(other);
}

std::vector<PointNo> PlacedPoints::Neighbours(Slot slot) const {
  const NetworkLayout& net = m_net->layout;
  std::vector<PointNo> neighbours;
  const auto add = [&](Slot other, const ObsData& obs) {
    const PointNo point = net.PointOf(other);
    if (!point.IsNone() && other != slot && HasDistance(obs)) neighbours.push_back(point);
  };
  for (const SightNo k : net.SightsTo(slot)) add(net.At(k).station, net.At(k).obs);
  for (const SightNo k : net.SightsFrom(slot)) add(net.At(k).target, net.At(k).obs);
  std::sort(neighbours.begin(), neighbours.end());
  return neighbours;
}

// The measured distances between a point and placed ones, in either direction, in name order of
// the latter.
std::vector<NamedCircle> PlacedPoints::CirclesThrough(Slot slot) const {
  const NetworkLayout& net = m_net->layout;
  std::vector<std::pair<Slot, double>> measured;  // other end, length
  const auto add = [&](Slot other, const ObsData& obs) {
    const PointNo point = net.PointOf(other);
    if (!point.IsNone() && other != slot && HasDistance(obs) && IsPlaced(point)) {
      measured.emplace_back(other, obs.distance);
    }
  };
  for (const SightNo k : net.SightsTo(slot)) add(net.At(k).station, net.At(k).obs);
  for (const SightNo k : net.SightsFrom(slot)) add(net.At(k).target, net.At(k).obs);
  // Of a line measured both ways the distance observed at the placed point counts.
  std::stable_sort(measured.begin(), measured.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<NamedCircle> circles;
  Slot last;
  for (const auto& [other, length] : measured) {
    if (other == last) continue;
    last = other;
    circles.push_back(
        {net.Names().NameAt(other).c_str(), {m_positions[net.PointOf(other)], length}});
  }
  Thin(circles);
  return circles;
}

std::optional<Placement> PlacedPoints::BestPlacement(Slot slot) const {
  const PointNo point = m_net->layout.PointOf(slot);
  if (point.IsNone() || m_net->layout.IsControl(point) || IsPlaced(point)) return std::nullopt;
  const std::vector<NamedCircle> circles = CirclesThrough(slot);
  std::optional<Placement> best;
  for (std::size_t i = 0; i < circles.size(); ++i) {
    for (std::size_t j = i + 1; j < circles.size(); ++j) {
      const double quality = IntersectionQuality(circles[i].circle, circles[j].circle);
      if (quality > (best ? best->quality : 0.0)) {
        best = Placement{slot, circles[i], circles[j], quality};
      }
    }
  }
  return best;
}

std::optional<Placement> PlacedPoints::NextPlacement(std::string_view name) {
  const NetworkLayout& net = m_net->layout;
  if (net.NewPointCount() < 1 || m_unplacedCount < 1) return std::nullopt;
  if (!name.empty()) {
    const Slot slot = net.Names().Find(name);
    return slot.IsNone() ? std::nullopt : BestPlacement(slot);
  }
  if (!m_isRanked) {
    m_ranking.clear();
    m_quality.Assign(m_net->points.Size(), 0.0);
    for (const PointNo i : net.NewPoints()) Rank(i);
    m_isRanked = true;
  }
  if (m_ranking.empty()) return std::nullopt;
  return BestPlacement(m_ranking.begin()->second);
}

void PlacedPoints::Rank(PointNo point) {
  const Slot slot = m_net->layout.SlotOf(point);
  double& quality = m_quality[point];
  if (quality > 0.0) m_ranking.erase({quality, slot});
  const std::optional<Placement> placement = BestPlacement(slot);
  quality = placement ? placement->quality : 0.0;
  if (placement) m_ranking.emplace(quality, slot);
}

}  // namespace brenu
