#include "job/result_lookup.h"

#include <algorithm>
#include <vector>

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

// That of the point in a list in ascending order of the points of a network.
template <typename Fit>
std::optional<Fit> FindFit(const AdjustmentContext& context, std::int32_t index,
                           const NetworkLayout& net, const std::vector<Fit>& fits) {
  const PointData* stored = context.store.FindPoint(index);
  if (stored == nullptr) return std::nullopt;
  const PointNo point = net.IndexOfPoint(NameOf(*stored));
  const auto place =
      std::lower_bound(fits.begin(), fits.end(), point,
                       [](const Fit& fit, PointNo number) { return fit.point < number; });
  return place == fits.end() || place->point != point ? std::nullopt : std::optional(*place);
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

std::optional<ControlFit> PlaneControlFit(const AdjustmentContext& context, std::int32_t index) {
  if (!context.adjusted.plane) return std::nullopt;
  const PlaneAdjustment& plane = context.plane.results;
  return FindFit(context, index, plane.Net().layout, plane.ControlFits());
}

std::optional<BenchMarkFit> HeightControlFit(const AdjustmentContext& context, std::int32_t index) {
  if (!context.adjusted.heights) return std::nullopt;
  const LevelAdjustment& level = context.level.results;
  return FindFit(context, index, level.Net().layout, level.BenchMarkFits());
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
