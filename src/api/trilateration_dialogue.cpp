#include "api/trilateration_dialogue.h"

#include "api/network_build.h"

namespace brenu {

namespace {

CircleRecord ToRecord(const NamedCircle& c) {
  return {c.name, c.circle.centre.x, c.circle.centre.y, c.circle.radius};
}

NamedCircle FromRecord(const CircleRecord& r) { return {r.name, {{r.x, r.y}, r.radius}}; }

}  // namespace

bool BeginTrilateration(AdjustmentContext& context) {
  BuildNetworks(context);
  if (context.param.format != kFormatDistancesOnly) return false;
  context.planeNet.UnplacePoints();
  return true;
}

std::optional<TrilaterationStep> NextTrilaterationStep(const AdjustmentContext& context,
                                                       std::string_view name) {
  if (!HasPlane(context.netType)) return std::nullopt;
  const auto placement = context.planeNet.NextPlacement(name);
  if (!placement) return std::nullopt;
  TrilaterationStep step{ToRecord(placement->first), ToRecord(placement->second), {}};
  step.text = placement->name + ": " + placement->first.name + " -> " + placement->second.name +
              ", left or right";
  return step;
}

std::optional<std::uint32_t> PlaceByTrilateration(AdjustmentContext& context, bool right,
                                                  const CircleRecord& first,
                                                  const CircleRecord& second,
                                                  std::string_view name) {
  if (!HasPlane(context.netType)) return std::nullopt;
  return context.planeNet.PlacePoint(right, FromRecord(first), FromRecord(second), name);
}

}  // namespace brenu
