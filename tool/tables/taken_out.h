#pragma once

#include <string>
#include <vector>

#include "review/network_view.h"

namespace brenu::tool {

// The observations that data snooping took out of the networks, with their residuals.
std::string TakenOutText(const AdjustmentContext& context, const std::vector<Network>& networks,
                         const std::vector<Observation>& observations);

}  // namespace brenu::tool
