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
std::string ExplainNoSnooping(AdjustmentContext& context);

// Empty when there are points, control points of the kind that the format needs and observations.
std::optional<std::string> FindMissingPart(AdjustmentContext& context);

// Empty when the data snooping of the plane, which went through, left a solution: a round that has
// none ends it without a word.
std::optional<std::string> FindUndeterminedPlane(AdjustmentContext& context);

// Empty when the traverses without orientation, of which `computed` is the answer, reach every
// point.
std::optional<std::string> FindTraverseFault(AdjustmentContext& context, bool computed);

// Empty when the adjustment, which went through, gave finite coordinates and heights.
std::optional<std::string> FindSenselessResult(AdjustmentContext& context);

}  // namespace brenu::tool
