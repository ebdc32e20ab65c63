#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

// A sentence about data that no network can be computed with: numbers that are not finite,
// negative distances, a-priori errors that give no weight.
std::optional<std::string> FindDataFault(AdjustmentContext& context);

// A sentence when the a-priori errors of the distances look as if they were in millimetres.
std::optional<std::string> DoubtAboutDistanceErrors(AdjustmentContext& context);

}  // namespace brenu::tool
