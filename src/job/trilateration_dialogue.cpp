#include "job/trilateration_dialogue.h"

#include "job/computations.h"
#include "job/network_build.h"

namespace brenu {

namespace {

CircleRecord ToRecord(const NamedCircle& c) {
  return {c.name, c.circle.centre.x, c.circle.centre.y, c.circle.radius};
}

NamedCircle FromRecord(const CircleRecord& r) { return {r.name, {{r.x, r.y}, r.radius}}; }

}  // namespace

Outcome BeginTrilateration(AdjustmentContext& context) {
  BuildNetworks(context);
  if (context.param.format != kFormatDistancesOnly) {
    return Error(BRENU_FORMAT_IS_NOT, {}, {kFormatDistancesOnly});
  }
  context.plane.points.UnplacePoints();
  return {};
}

std::optional<TrilaterationStep> NextTrilaterationStep(AdjustmentContext& context,
                                                       std::string_view name) {
  if (!HasPlane(context.netType)) return std::nullopt;
  const auto placement = context.plane.points.NextPlacement(name);
  if (!placement) return std::nullopt;
  TrilaterationStep step{ToRecord(placement->first), ToRecord(placement->second), {}};
  const std::string& point = context.plane.net->layout.Names().NameAt(placement->slot);
  step.text =
      point + ": " + placement->first.name + " -> " + placement->second.name + ", left or right";
  return step;
}

Outcome PlaceByTrilateration(AdjustmentContext& context, bool right, const CircleRecord& first,
                             const CircleRecord& second, std::string_view name,
                             std::uint32_t& remaining) {
  if (!HasPlane(context.netType)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  PlacedPoints& points = context.plane.points;
  const bool placed = points.PlacePoint(right, FromRecord(first), FromRecord(second), name);
  remaining = points.UnplacedCount();
  if (!placed) return Error(BRENU_NO_PLACE, {std::string(name)});
  return {};
}

Outcome FinishTrilateration(AdjustmentContext& context) {
  if (!HasPlane(context.netType)) return Error(BRENU_FORMAT_NEEDS_PLANE);
  const PlacedPoints& points = context.plane.points;
  for (const PointNo i : points.Net().layout.NewPoints()) {
    if (points.IsPlaced(i)) continue;
    return Error(BRENU_POINT_NOT_PLACED, {std::string(NameOf(points.Net().points[i]))});
  }
  if (Outcome prepared = PreparePlane(context); !prepared.ok) return prepared;
  context.plane.results.TakePlacedPoints(points.Positions());
  return {};
}

}  // namespace brenu
