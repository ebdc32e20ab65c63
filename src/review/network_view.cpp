#include "review/network_view.h"

#include <cmath>

namespace brenu {

bool NetworkFigures::HasPrecision() const {
  return redundancy > 0 && newPoints > 0 && std::isfinite(sigma0);
}

std::vector<Network> AdjustedNetworks(const AdjustmentContext& context) {
  std::vector<Network> networks;
  const bool heights = HasLevelling(context.netType) && !IsDistancesOnly(context);
  if (heights) networks.push_back(Network::kHeights);
  if (HasPlane(context.netType)) networks.push_back(Network::kPlane);
  return networks;
}

NetworkFigures FiguresOf(const AdjustmentContext& context, Network network) {
  NetworkFigures figures{};
  for (const auto& [index, point] : context.store.Points()) {
    ++(IsControl(point, network) ? figures.controlPoints : figures.newPoints);
  }
  const bool heights = network == Network::kHeights;
  figures.redundancy =
      heights ? context.level.results.Redundancy() : context.plane.results.Redundancy();
  figures.sigma0 = heights ? context.level.results.Sigma0() : context.plane.results.Sigma0();
  return figures;
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
