#pragma once

#include <optional>
#include <span>
#include <vector>

#include "brenu/brenu.h"
#include "network_view.h"

namespace brenu::tool {

// A kind of observation and how its residuals are shown.
struct ObservationKind {
  const char* plural;
  const char* singular;
  const char* unit;
  double scale;  // from the unit of the interface to the one shown
  // Empty when the observation has no part of this kind in the adjusted network.
  std::optional<double> (*residual)(AdjustmentContext* context, const Observation& observation);
};

std::span<const ObservationKind> KindsOf(const AdjustmentContext& context, Network network);

// The residuals of one kind, in the unit shown.
struct ResidualSummary {
  int count = 0;
  double worst = 0.0;               // the one of the largest amount
  const Observation* at = nullptr;  // its observation; null without observations of the kind
};

ResidualSummary SummariseResiduals(AdjustmentContext* context, const ObservationKind& kind,
                                   const std::vector<Observation>& observations);

// How many stations have an observation of one of the kinds.
int CountStations(AdjustmentContext* context, std::span<const ObservationKind> kinds,
                  const std::vector<Observation>& observations);

}  // namespace brenu::tool
