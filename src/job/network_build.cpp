#include "job/network_build.h"

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

void BuildLevel(const AdjustmentContext& context, LevelPart& level) {
  level.net = Build<LevelNet>(context, context.store.Points(), IsHeightControl);
  level.heights.Clear();
  level.heights.Reserve(level.net->points.Size());
  for (const PointData& point : level.net->points) level.heights.Add(point.h);
}

void BuildPlane(const AdjustmentContext& context, PlanePart& plane) {
  const auto net = Build<PlaneNet>(context, context.store.Points(), IsPlaneControl);
  const NameTable& names = net->layout.Names();
  for (const auto& [from, to] : context.askedPairs) {
    const Slot a = names.Find(from);
    const Slot b = names.Find(to);
    if (!a.IsNone() && !b.IsNone()) net->askedPairs.emplace_back(a, b);
  }
  plane.net = net;
  plane.points = PlacedPoints(plane.net);
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
  if (HasLevelling(type)) BuildLevel(context, context.level);
  if (HasPlane(type)) BuildPlane(context, context.plane);
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
