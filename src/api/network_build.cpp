#include "api/network_build.h"

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
  const Store& store = context.store;
  if (HasLevelling(type)) {
    NumberedPoints numbered(store.Points(), IsHeightControl);
    context.levelNet.Fill(std::move(numbered.points), numbered.knownCount, store.Observations(),
                          context.param);
  }
  if (HasPlane(type)) {
    NumberedPoints numbered(store.Points(), IsPlaneControl);
    context.planeNet.Fill(std::move(numbered.points), numbered.knownCount, store.Observations(),
                          context.param);
  }
}

}  // namespace brenu
