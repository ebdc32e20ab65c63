#pragma once

#include <string>
#include <vector>

#include "review/network_view.h"

namespace brenu::tool {

// The size of an adjusted network, its standard error of unit weight, the largest point error and
// the worst residual of each kind.
std::string Summary(const AdjustmentContext& context, Network network,
                    const std::vector<Observation>& observations);

}  // namespace brenu::tool
