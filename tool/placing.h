#pragma once

#include <optional>
#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

// Leads the dialogue of trilateration: places all new points of a distance-only network and hands
// their coordinates to the adjustment.  A sentence when that is not possible.
//
// Of the two places where the circles around two placed points meet it takes the one nearer to the
// approximate coordinates (X and Y in the file, neither 0), or else the one that fits the distances
// to other placed points.
std::optional<std::string> PlacePoints(AdjustmentContext& context);

}  // namespace brenu::tool
