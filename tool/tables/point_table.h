#pragma once

#include <string>

#include "review/network_view.h"

namespace brenu::tool {

// The adjusted points of a network with their precision, by index.
std::string PointTable(const AdjustmentContext& context, Network network);

// X and Y of all points, without precision.
std::string CoordinateTable(const AdjustmentContext& context);

}  // namespace brenu::tool
