#include "network_view.h"

#include <cmath>

#include "job/adjustment_context.h"

namespace brenu::tool {

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
  figures.redundancy = heights ? context.levelNet.Redundancy() : context.planeNet.Redundancy();
  figures.sigma0 = heights ? context.levelNet.Sigma0() : context.planeNet.Sigma0();
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

std::vector<PointData> PointsOf(const AdjustmentContext& context) {
  std::vector<PointData> points;
  points.reserve(context.store.Points().size());
  for (const auto& [index, point] : context.store.Points()) points.push_back(point);
  return points;
}

std::vector<Observation> ObservationsOf(const AdjustmentContext& context) {
  std::vector<Observation> observations;
  for (const auto& [station, targets] : context.store.Observations()) {
    const std::int32_t index = context.store.IndexOfName(station);
    for (const auto& [target, data] : targets) {
      observations.push_back({index, station.c_str(), target.c_str(), data});
    }
  }
  return observations;
}

}  // namespace brenu::tool
