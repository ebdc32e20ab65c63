#include "review/placing.h"

#include <cmath>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "core/angles.h"
#include "core/pass_queue.h"
#include "job/computations.h"
#include "job/trilateration_dialogue.h"

namespace brenu {

namespace {

double Distance(const Position& a, const Position& b) { return CalcDistance(a.x, a.y, b.x, b.y); }

// A placement with the place that was decided on.
struct Decision {
  Placement placement;
  bool right;  // of the line from the first to the second centre
};

class Placing {
 public:
  explicit Placing(PlacedPoints& points);

  // Fails when points are left.
  Outcome Run();

 private:
  // Points that cross at a better angle than 30 degrees are placed at once, in passes in the order
  // of the file; of others only the best one, when nothing else is left.
  static constexpr double kGoodAngle = 0.5;

  void Visit(PointNo point);
  bool PlaceBest();
  void Place(PointNo point, const Decision& decision);
  std::optional<Decision> Decide(const Placement& placement) const;
  // The sum of (misfit / a-priori error)^2 of the other distances to placed points.
  double Misfit(const Placement& placement, const Position& place) const;
  Finding ExplainRest() const;

  PlacedPoints& m_points;
  const NetworkLayout& m_net;
  PassQueue<PointNo> m_queue;  // open points with something new to cross
  Table<PointNo, char> m_isOpen;
  // Open points of a decided place but a poor angle, the best last; of equal ones the first in the
  // file.
  using Ranked = std::pair<double, std::int32_t>;  // quality, point number with its sign reversed
  std::set<Ranked> m_poor;
  Table<PointNo, double> m_quality;  // of those; 0 for others
  std::int32_t m_openCount;
};

Placing::Placing(PlacedPoints& points)
    : m_points(points),
      m_net(points.Net().layout),
      m_queue(points.Net().points.Size()),
      m_openCount(m_net.NewPointCount()) {
  m_isOpen.Assign(points.Net().points.Size(), 0);
  m_quality.Assign(points.Net().points.Size(), 0.0);
  for (const PointNo point : m_net.NewPoints()) {
    m_isOpen[point] = 1;
    m_queue.Add(point);
  }
}

Outcome Placing::Run() {
  while (m_openCount > 0) {
    while (m_queue.StartPass()) {
      for (PointNo point = m_queue.Next(); !point.IsNone(); point = m_queue.Next()) Visit(point);
    }
    if (m_openCount > 0 && !PlaceBest()) return ExplainRest();
  }
  return {};
}

void Placing::Visit(PointNo point) {
  if (m_isOpen[point] == 0) return;
  double& quality = m_quality[point];
  if (quality > 0.0) m_poor.erase({quality, -point.Number()});
  quality = 0.0;
  const auto placement = m_points.BestPlacement(m_net.SlotOf(point));
  if (!placement) return;
  const auto decision = Decide(*placement);
  if (!decision) return;
  if (placement->quality >= kGoodAngle) {
    Place(point, *decision);
  } else {
    quality = placement->quality;
    m_poor.emplace(quality, -point.Number());
  }
}

bool Placing::PlaceBest() {
  if (m_poor.empty()) return false;
  const PointNo best(-m_poor.rbegin()->second);
  m_poor.erase(std::prev(m_poor.end()));
  m_quality[best] = 0.0;
  const auto placement = m_points.BestPlacement(m_net.SlotOf(best));
  Place(best, *Decide(*placement));
  return true;
}

void Placing::Place(PointNo point, const Decision& decision) {
  const Slot slot = decision.placement.slot;
  m_points.PlacePoint(decision.right, decision.placement.first, decision.placement.second,
                      m_net.Names().NameAt(slot));
  m_isOpen[point] = 0;
  --m_openCount;
  for (const PointNo other : m_points.Neighbours(slot)) {
    if (m_isOpen[other] != 0) m_queue.Add(other);
  }
}

std::optional<Decision> Placing::Decide(const Placement& placement) const {
  const auto places = Intersect(placement.first.circle, placement.second.circle);
  if (!places) return std::nullopt;
  const auto& [right, left] = *places;
  const PointData& stored = m_points.Net().points[m_net.PointOf(placement.slot)];
  if (stored.x != 0.0 && stored.y != 0.0) {
    const Position given = {stored.x, stored.y};
    return Decision{placement, !(Distance(given, left) < Distance(given, right))};
  }
  const double leftMisfit = Misfit(placement, left);
  const double rightMisfit = Misfit(placement, right);
  // Decided when one side fits three times as well and the other is off by three a-priori errors.
  const auto isFarBetter = [](double one, double other) {
    return other > 9.0 * std::fmax(1.0, one);
  };
  if (isFarBetter(leftMisfit, rightMisfit)) return Decision{placement, false};
  if (isFarBetter(rightMisfit, leftMisfit)) return Decision{placement, true};
  return std::nullopt;
}

double Placing::Misfit(const Placement& placement, const Position& place) const {
  const AdjParam& param = m_points.Net().param;
  double sum = 0.0;
  const auto add = [&](Slot other, const ObsData& obs) {
    const PointNo point = m_net.PointOf(other);
    const std::string& name = m_net.Names().NameAt(other);
    if (!HasDistance(obs) || point.IsNone() || !m_points.IsPlaced(point)) return;
    if (name == placement.first.name || name == placement.second.name) return;
    const double misfit = (Distance(place, m_points.Positions()[point]) - obs.distance) /
                          (param.MS + param.MR * obs.distance);
    sum += misfit * misfit;
  };
  for (const SightNo k : m_net.SightsFrom(placement.slot)) add(m_net.At(k).target, m_net.At(k).obs);
  for (const SightNo k : m_net.SightsTo(placement.slot)) add(m_net.At(k).station, m_net.At(k).obs);
  return sum;
}

Finding Placing::ExplainRest() const {
  Finding noPlace = Error(BRENU_NO_PLACE);
  for (const PointNo point : m_net.NewPoints()) {
    if (m_isOpen[point] == 0) continue;
    const std::string& name = m_net.Names().NameAt(m_net.SlotOf(point));
    const auto placement = m_points.BestPlacement(m_net.SlotOf(point));
    if (placement) {
      return Error(BRENU_SIDE_UNDETERMINED, {name, placement->first.name, placement->second.name});
    }
    noPlace.names.push_back(name);
  }
  return noPlace;
}

}  // namespace

Outcome PlacePoints(AdjustmentContext& context) {
  if (Outcome begun = BeginTrilateration(context); !begun.ok) return begun;
  PlacedPoints& points = context.plane.points;
  for (const PointNo i : points.Net().layout.ControlPoints()) {
    if (points.IsPlaced(i)) continue;
    return Error(BRENU_POINT_AT_ZERO, {std::string(NameOf(points.Net().points[i]))});
  }
  if (Outcome prepared = PreparePlane(context); !prepared.ok) return prepared;
  if (Outcome placed = Placing(points).Run(); !placed.ok) return placed;
  Outcome finished = FinishTrilateration(context);
  for (Finding& finding : finished.findings) {
    // All are placed: one that looks as if it were not lies there.
    if (finding.code == BRENU_POINT_NOT_PLACED) finding.code = BRENU_POINT_AT_ZERO;
  }
  return finished;
}

}  // namespace brenu
