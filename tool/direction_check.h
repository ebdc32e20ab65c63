#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

// The adjustment compares directions without reducing full circles: with the zero of a circle close
// to north some of its reduced directions come out 360 degrees off, and the result is worthless.
// A sentence about the first such direction at the coordinates of the last computation.
std::optional<std::string> FindTurnedDirection(AdjustmentContext& context);

}  // namespace brenu::tool
