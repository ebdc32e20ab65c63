#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

// A sentence about data that nothing can be computed with: numbers that are not finite, negative
// distances.
std::optional<std::string> FindDataFault(const AdjustmentContext& context);

// A sentence about a-priori errors that give observations no weight.
std::optional<std::string> FindWeightFault(AdjustmentContext& context);

// A sentence when the a-priori errors of the distances look as if they were in millimetres.
std::optional<std::string> DoubtAboutDistanceErrors(AdjustmentContext& context);

// A sentence about height differences that count for nothing, for want of a line length.
std::optional<std::string> DoubtAboutLineLengths(AdjustmentContext& context);

// A sentence about azimuths in a network of heights alone: a decimal comma makes them.
std::optional<std::string> DoubtAboutAzimuths(AdjustmentContext& context);

// A sentence when there is no such format, or it leaves out, or only counts, what the file has.
std::optional<std::string> DoubtAboutFormat(AdjustmentContext& context);

}  // namespace brenu::tool
