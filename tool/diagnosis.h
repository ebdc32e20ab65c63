// Why the library answered with false.  It says no more than that; this looks inside the networks
// as the failed computation left them.
#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

// Each gives one sentence: what is wrong and what to do.
std::string ExplainNoApproximation(AdjustmentContext& context);
std::string ExplainNoSolution(AdjustmentContext& context);

// Empty when the adjustment, which went through, gave finite coordinates and heights.
std::optional<std::string> FindSenselessResult(AdjustmentContext& context);

}  // namespace brenu::tool
