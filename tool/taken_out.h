#pragma once

#include <string>
#include <vector>

#include "brenu/brenu.h"
#include "network_view.h"

namespace brenu::tool {

// The observations that data snooping took out of the networks, with their residuals.
std::string TakenOutText(AdjustmentContext& context, const std::vector<Network>& networks,
                         const std::vector<Observation>& observations);

}  // namespace brenu::tool
