#include "review/network_view.h"

#include <cmath>

namespace brenu {

bool NetworkFigures::HasPrecision() const {
  return redundancy > 0 && newPoints > 0 && std::isfinite(sigma0);
}

std::vector<Network> AdjustedNetworks(const AdjustmentContext& context) {
  std::vector<Network> networks;
  if (context.adjusted.heights) networks.push_back(Network::kHeights);
  if (context.adjusted.plane) networks.push_back(Network::kPlane);
  return networks;
}

NetworkFigures FiguresOf(const AdjustmentContext& context, Network network) {
  const auto figuresOf = [](const auto& results) {
    const NetworkLayout& net = results.Net().layout;
    std::int32_t leftOut = 0;
    for (const PointNo i : net.NewPoints()) leftOut += results.IsLeftOut(i) ? 1 : 0;
    return NetworkFigures{net.ControlCount(), net.NewPointCount(), results.Redundancy(), leftOut,
                          results.Sigma0()};
  };
  return network == Network::kHeights ? figuresOf(context.level.results)
                                      : figuresOf(context.plane.results);
}

bool IsUnoriented(const AdjustmentContext& context) {
  return context.param.format == kFormatNoOrientation;
}

bool IsOrdinary(const AdjustmentContext& context) {
  return !IsUnoriented(context) && !IsDistancesOnly(context);
}

bool IsDistancesOnly(const AdjustmentContext& context) {
  return context.param.format == kFormatDistancesOnly;
}

bool IsControl(const PointData& point, Network network) {
  return network == Network::kHeights ? IsHeightControl(point) : IsPlaneControl(point);
}

std::vector<Observation> ObservationsOf(const AdjustmentContext& context) {
  std::vector<Observation> observations;
  for (const auto& [station, targets] : context.store.Observations()) {
    for (const auto& [target, data] : targets) observations.push_back({station, target, data});
  }
  return observations;
}

}  // namespace brenu
