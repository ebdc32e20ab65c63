#include "api/result_lookup.h"

namespace brenu {

namespace {

// The name stored under an index, when the last build included the plane network.
std::optional<std::string_view> PlaneName(const AdjustmentContext& context, std::int32_t index) {
  if (!HasPlane(context.netType)) return std::nullopt;
  const PointData* point = context.store.FindPoint(index);
  if (point == nullptr) return std::nullopt;
  return NameOf(*point);
}

// The record of the levelling network for the name stored under an index.
const PointData* LevelPoint(const AdjustmentContext& context, std::int32_t index) {
  const PointData* stored = context.store.FindPoint(index);
  if (stored == nullptr) return nullptr;
  const std::int32_t number = context.levelNet.IndexOfPoint(NameOf(*stored));
  return number < 0 ? nullptr : &context.levelNet.Point(number);
}

}  // namespace

std::optional<PointData> ApproxResult(const AdjustmentContext& context, std::int32_t number) {
  const PointData* plane = nullptr;
  if (HasPlane(context.netType)) {
    plane = context.planeNet.FindPoint(number);
    if (plane == nullptr) return std::nullopt;
    if (context.netType == kPlane) return *plane;
  }
  if (!HasLevelling(context.netType)) return std::nullopt;
  const PointData* level = LevelPoint(context, number);
  if (level == nullptr) return std::nullopt;
  if (plane == nullptr) return *level;
  PointData result = *plane;
  result.h = level->h;
  return result;
}

std::optional<PlaneResult> PlanePointResult(const AdjustmentContext& context, std::int32_t index) {
  const auto name = PlaneName(context, index);
  return name ? context.planeNet.ResultOfPoint(*name) : std::nullopt;
}

std::optional<PlaneObsResult> DirectionResult(const AdjustmentContext& context,
                                              std::int32_t station, std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.planeNet.ResultOfDirection(*name, target) : std::nullopt;
}

std::optional<PlaneObsResult> DistanceResult(const AdjustmentContext& context, std::int32_t station,
                                             std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.planeNet.ResultOfDistance(*name, target) : std::nullopt;
}

std::optional<PlaneObsResult> AzimuthResult(const AdjustmentContext& context, std::int32_t station,
                                            std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.planeNet.ResultOfAzimuth(*name, target) : std::nullopt;
}

std::optional<LinePrecision> LineResult(const AdjustmentContext& context, std::int32_t station,
                                        std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.planeNet.PrecisionOfLine(*name, target) : std::nullopt;
}

TraverseTable::Row TraverseRow(const AdjustmentContext& context, std::int32_t index) {
  const auto name = PlaneName(context, index);
  if (!name || context.planeNet.IndexOfPoint(*name) < 0) return {nullptr, nullptr};
  return context.planeNet.TraverseRow(*name);
}

std::optional<VerticalResult> HeightResult(AdjustmentContext& context, std::int32_t index) {
  if (!HasLevelling(context.netType)) return std::nullopt;
  return context.levelNet.ResultOfPoint(NameOf(context.store.PointOrEmpty(index)));
}

std::optional<HeightObsResult> HeightDiffResult(AdjustmentContext& context, std::int32_t station,
                                                std::string_view target) {
  if (!HasLevelling(context.netType)) return std::nullopt;
  return context.levelNet.ResultOfObs(NameOf(context.store.PointOrEmpty(station)), target);
}

}  // namespace brenu
