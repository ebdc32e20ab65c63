#include "job/result_lookup.h"

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
std::optional<PointData> LevelPoint(const AdjustmentContext& context, std::int32_t index) {
  const PointData* stored = context.store.FindPoint(index);
  if (stored == nullptr) return std::nullopt;
  const LevelPart& level = context.level;
  const PointNo number = level.net->layout.IndexOfPoint(NameOf(*stored));
  if (number.IsNone()) return std::nullopt;
  PointData point = level.net->points[number];
  point.h = level.heights[number];
  return point;
}

}  // namespace

std::optional<PointData> ApproxResult(const AdjustmentContext& context, std::int32_t number) {
  std::optional<PointData> result;
  if (HasPlane(context.netType)) {
    result = context.plane.points.FindPoint(number);
    if (!result || context.netType == kPlane) return result;
  }
  if (!HasLevelling(context.netType)) return std::nullopt;
  const std::optional<PointData> level = LevelPoint(context, number);
  if (!result || !level) return level;
  result->h = level->h;
  return result;
}

std::optional<PlaneResult> PlanePointResult(const AdjustmentContext& context, std::int32_t index) {
  const auto name = PlaneName(context, index);
  return name ? context.plane.results.ResultOfPoint(*name) : std::nullopt;
}

std::optional<PlaneObsResult> DirectionResult(const AdjustmentContext& context,
                                              std::int32_t station, std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.plane.results.ResultOfDirection(*name, target) : std::nullopt;
}

std::optional<PlaneObsResult> DistanceResult(const AdjustmentContext& context, std::int32_t station,
                                             std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.plane.results.ResultOfDistance(*name, target) : std::nullopt;
}

std::optional<PlaneObsResult> AzimuthResult(const AdjustmentContext& context, std::int32_t station,
                                            std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.plane.results.ResultOfAzimuth(*name, target) : std::nullopt;
}

std::optional<LinePrecision> LineResult(const AdjustmentContext& context, std::int32_t station,
                                        std::string_view target) {
  const auto name = PlaneName(context, station);
  return name ? context.plane.results.PrecisionOfLine(*name, target) : std::nullopt;
}

TraverseTable::Row TraverseRow(const AdjustmentContext& context, std::int32_t index) {
  const auto name = PlaneName(context, index);
  if (!name || context.plane.net->layout.IndexOfPoint(*name).IsNone()) return {nullptr, nullptr};
  return context.plane.traverses.Find(*name);
}

std::optional<VerticalResult> HeightResult(AdjustmentContext& context, std::int32_t index) {
  if (!HasLevelling(context.netType)) return std::nullopt;
  return context.level.results.ResultOfPoint(NameOf(context.store.PointOrEmpty(index)));
}

std::optional<HeightObsResult> HeightDiffResult(AdjustmentContext& context, std::int32_t station,
                                                std::string_view target) {
  if (!HasLevelling(context.netType)) return std::nullopt;
  return context.level.results.ResultOfObs(NameOf(context.store.PointOrEmpty(station)), target);
}

}  // namespace brenu
