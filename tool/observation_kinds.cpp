#include "observation_kinds.h"

#include <algorithm>
#include <cmath>

#include "job/result_lookup.h"

namespace brenu::tool {

namespace {

template <auto LookUp>
std::optional<ObservationResult> Find(AdjustmentContext& context, const Observation& o) {
  const auto result = LookUp(context, o.station, o.target);
  if (!result) return std::nullopt;
  return ObservationResult{result->residual, result->removed};
}

constexpr ObservationKind kHeightKinds[] = {
    {"height differences", "height difference", "mm", 1000.0, Find<HeightDiffResult>}};
constexpr ObservationKind kPlaneKinds[] = {
    {"distances", "distance", "mm", 1000.0, Find<DistanceResult>},
    {"directions", "direction", "\"", 1.0, Find<DirectionResult>},
    {"azimuths", "azimuth", "\"", 1.0, Find<AzimuthResult>}};

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
    const auto result = kind.result(*context, o);
    if (!result) continue;
    ++summary.count;
    if (result->takenOut) {
      ++summary.takenOut;
      continue;
    }
    const double shown = result->residual * kind.scale;
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
        [&](const ObservationKind& kind) { return kind.result(*context, o).has_value(); });
    if (!takesPart || o.station == last) continue;
    ++count;
    last = o.station;
  }
  return count;
}

}  // namespace brenu::tool
