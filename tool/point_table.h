#pragma once

#include <string>

#include "brenu/brenu.h"
#include "network_view.h"

namespace brenu::tool {

// The adjusted points of a network with their precision, by index.
std::string PointTable(AdjustmentContext* context, Network network);

// X and Y of all points, without precision.
std::string CoordinateTable(AdjustmentContext* context);

}  // namespace brenu::tool
