#pragma once

#include <optional>
#include <span>
#include <vector>

#include "review/network_view.h"

namespace brenu {

// What the last computation found for one observation.
struct ObservationResult {
  double residual;  // metres or arc-seconds
  bool takenOut;    // by data snooping
};

// A kind of observation and how its residuals are shown.
struct ObservationKind {
  const char* plural;
  const char* singular;
  const char* unit;
  double scale;  // from the unit of the result to the one shown
  // Empty when the observation has no part of this kind in the adjusted network.
  std::optional<ObservationResult> (*result)(const AdjustmentContext& context,
                                             const Observation& observation);
};

std::span<const ObservationKind> KindsOf(const AdjustmentContext& context, Network network);

// The residuals of one kind, in the unit shown.
struct ResidualSummary {
  int count = 0;
  int takenOut = 0;                 // how many of them
  double worst = 0.0;               // of those in use the one of the largest amount
  const Observation* at = nullptr;  // its observation; null without observations of the kind
};

ResidualSummary SummariseResiduals(const AdjustmentContext& context, const ObservationKind& kind,
                                   const std::vector<Observation>& observations);

// How many stations have an observation of one of the kinds.
int CountStations(const AdjustmentContext& context, std::span<const ObservationKind> kinds,
                  const std::vector<Observation>& observations);

}  // namespace brenu
