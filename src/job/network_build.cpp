#include "job/network_build.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace brenu {

namespace {

// The points in network order: known ones first, each kind in ascending store index.
struct NumberedPoints {
  std::vector<PointData> points;
  std::int32_t knownCount = 0;

  NumberedPoints(const Store::PointMap& store, bool (*isKnown)(const PointData&)) {
    points.reserve(store.size());
    for (const auto& entry : store) {
      if (isKnown(entry.second)) points.push_back(entry.second);
    }
    knownCount = static_cast<std::int32_t>(points.size());
    for (const auto& entry : store) {
      if (!isKnown(entry.second)) points.push_back(entry.second);
    }
  }
};

template <typename Net>
std::shared_ptr<Net> Build(const AdjustmentContext& context, const Store::PointMap& points,
                           bool (*isKnown)(const PointData&)) {
  NumberedPoints numbered(points, isKnown);
  return std::make_shared<Net>(std::move(numbered.points), numbered.knownCount,
                               context.store.Observations(), context.param);
}

std::shared_ptr<const PlaneNet> BuildPlane(const AdjustmentContext& context) {
  auto net = Build<PlaneNet>(context, context.store.Points(), IsPlaneControl);
  const NameTable& names = net->layout.Names();
  for (const auto& [from, to] : context.askedPairs) {
    const Slot a = names.Find(from);
    const Slot b = names.Find(to);
    if (!a.IsNone() && !b.IsNone()) net->askedPairs.emplace_back(a, b);
  }
  return net;
}

bool IsSame(const BuildInput& a, const BuildInput& b) {
  static_assert(sizeof(AdjParam) == 48, "no padding to compare");
  // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the same bits are meant, not numbers
  return a.store == b.store && std::memcmp(&a.param, &b.param, sizeof(AdjParam)) == 0 &&
         a.askedPairs == b.askedPairs;
}

}  // namespace

std::int32_t ClassifyNetwork(AdjustmentContext& context) {
  bool height = false;
  bool plane = false;
  for (const auto& [index, point] : context.store.Points()) {
    height = height || IsHeightControl(point);
    plane = plane || IsPlaneControl(point);
  }
  context.netType = (height ? kLevelling : 0) + (plane ? kPlane : 0);
  return context.netType;
}

void BuildNetworks(AdjustmentContext& context) {
  const std::int32_t type = ClassifyNetwork(context);
  context.adjusted = {};
  BuildInput input = {context.store.State(), context.param, context.askedPairs};
  const bool isKnown = IsSame(input, context.builtFrom);
  context.builtFrom = {};  // until all is built
  if (HasLevelling(type)) {
    LevelPart& level = context.level;
    if (!isKnown) level.net = Build<LevelNet>(context, context.store.Points(), IsHeightControl);
    level.heights.Clear();
    level.heights.Reserve(level.net->points.Size());
    for (const PointData& point : level.net->points) level.heights.Add(point.h);
  }
  if (HasPlane(type)) {
    if (!isKnown) context.plane.net = BuildPlane(context);
    context.plane.points = PlacedPoints(context.plane.net);
  }
  context.builtFrom = std::move(input);
}

std::shared_ptr<const PlaneNet> PlaneNetFreeing(const AdjustmentContext& context,
                                                std::int32_t index) {
  Store::PointMap points = context.store.Points();
  PointData& freed = points.at(index);
  freed.type %= 10;
  freed.x = freed.y = 0.0;
  return Build<PlaneNet>(context, points, IsPlaneControl);
}

void KeepOriginalPoints(AdjustmentContext& context) {
  const auto& points = context.store.Points();
  const auto count = static_cast<std::int32_t>(points.size());
  for (auto place = points.lower_bound(0); place != points.end() && place->first < count; ++place) {
    context.originalPoints.insert_or_assign(place->first, place->second);
  }
}

}  // namespace brenu
