// The computations, by the format of the file, each with an explanation when it fails.
#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"
#include "fault.h"

namespace brenu::tool {

// Format 0: adjustment, or data snooping with a level of significance for heights and plane.
std::optional<Fault> AdjustNetwork(AdjustmentContext& context);
std::optional<Fault> SnoopNetwork(AdjustmentContext& context, double alpha);

// Format 1: coordinates of traverses without orientation.
std::optional<Fault> ComputeTraverses(AdjustmentContext& context);

// Format 3: places the points of a distance-only network, then adjusts it.
std::optional<Fault> AdjustDistancesOnly(AdjustmentContext& context);

// Closure errors, perhaps none.
std::optional<Fault> ComputeClosures(AdjustmentContext& context);
// Why there are none.
std::string NoClosures(const AdjustmentContext& context);

}  // namespace brenu::tool
