#include "review/residuals.h"

#include <algorithm>
#include <cmath>

namespace brenu {

namespace {

template <typename Result>
std::optional<ObservationResult> Part(const std::optional<Result>& result) {
  if (!result) return std::nullopt;
  return ObservationResult{result->residual, result->removed};
}

template <auto LookUp>
std::optional<ObservationResult> InPlane(const AdjustmentContext& context, const Observation& o) {
  return Part((context.plane.results.*LookUp)(o.station, o.target));
}

std::optional<ObservationResult> InHeights(const AdjustmentContext& context, const Observation& o) {
  return Part(context.level.results.ResultOfObs(o.station, o.target));
}

constexpr ObservationKind kHeightKinds[] = {
    {"height differences", "height difference", "mm", 1000.0, InHeights}};
constexpr ObservationKind kPlaneKinds[] = {
    {"distances", "distance", "mm", 1000.0, InPlane<&PlaneAdjustment::ResultOfDistance>},
    {"directions", "direction", "\"", 1.0, InPlane<&PlaneAdjustment::ResultOfDirection>},
    {"azimuths", "azimuth", "\"", 1.0, InPlane<&PlaneAdjustment::ResultOfAzimuth>}};

}  // namespace

std::span<const ObservationKind> KindsOf(const AdjustmentContext& context, Network network) {
  if (network == Network::kHeights) return kHeightKinds;
  const std::span<const ObservationKind> all = kPlaneKinds;
  return IsDistancesOnly(context) ? all.first(1) : all;
}

ResidualSummary SummariseResiduals(const AdjustmentContext& context, const ObservationKind& kind,
                                   const std::vector<Observation>& observations) {
  ResidualSummary summary;
  for (const Observation& o : observations) {
    const auto result = kind.result(context, o);
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

int CountStations(const AdjustmentContext& context, std::span<const ObservationKind> kinds,
                  const std::vector<Observation>& observations) {
  int count = 0;
  const std::string_view* last = nullptr;  // the observations of a station stand together
  for (const Observation& o : observations) {
    const bool takesPart = std::any_of(
        kinds.begin(), kinds.end(),
        [&](const ObservationKind& kind) { return kind.result(context, o).has_value(); });
    if (!takesPart || (last != nullptr && o.station == *last)) continue;
    ++count;
    last = &o.station;
  }
  return count;
}

}  // namespace brenu
