#include "observation_kinds.h"

#include <algorithm>
#include <cmath>

namespace brenu::tool {

namespace {

template <auto Getter>
std::optional<double> PlaneResidual(AdjustmentContext* context, const Observation& o) {
  double residual = 0.0;
  double adjusted = 0.0;
  double apriori = 0.0;
  if (!Getter(context, o.station, o.target, &residual, &adjusted, &apriori)) return std::nullopt;
  return residual;
}

std::optional<double> HeightResidual(AdjustmentContext* context, const Observation& o) {
  double residual = 0.0;
  double adjusted = 0.0;
  double sigma = 0.0;
  double weight = 0.0;
  if (!GetHeightObsResult(context, o.station, o.target, &residual, &adjusted, &sigma, &weight)) {
    return std::nullopt;
  }
  return residual;
}

constexpr ObservationKind kHeightKinds[] = {
    {"height differences", "height difference", "mm", 1000.0, HeightResidual}};
constexpr ObservationKind kPlaneKinds[] = {
    {"distances", "distance", "mm", 1000.0, PlaneResidual<GetLengthResult>},
    {"directions", "direction", "\"", 1.0, PlaneResidual<GetDirAngleResult>},
    {"azimuths", "azimuth", "\"", 1.0, PlaneResidual<GetAzimuthResult>}};

}  // namespace

std::span<const ObservationKind> KindsOf(const AdjustmentContext& context, Network network) {
  if (network == Network::kHeights) return kHeightKinds;
  const std::span<const ObservationKind> all = kPlaneKinds;
  return IsDistancesOnly(context) ? all.first(1) : all;
}

ResidualSummary SummariseResiduals(AdjustmentContext* context, const ObservationKind& kind,
                                   const std::vector<Observation>& observations) {
  ResidualSummary summary;
  for (const Observation& o : observations) {
    const std::optional<double> residual = kind.residual(context, o);
    if (!residual) continue;
    ++summary.count;
    const double shown = *residual * kind.scale;
    if (summary.at != nullptr && !(std::fabs(shown) > std::fabs(summary.worst))) continue;
    summary.worst = shown;
    summary.at = &o;
  }
  return summary;
}

int CountStations(AdjustmentContext* context, std::span<const ObservationKind> kinds,
                  const std::vector<Observation>& observations) {
  int count = 0;
  std::int32_t last = -1;  // the observations of a station stand together
  for (const Observation& o : observations) {
    const bool takesPart = std::any_of(
        kinds.begin(), kinds.end(),
        [&](const ObservationKind& kind) { return kind.residual(context, o).has_value(); });
    if (!takesPart || o.station == last) continue;
    ++count;
    last = o.station;
  }
  return count;
}

}  // namespace brenu::tool
