#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// Leads the dialogue of trilateration: places all new points of a distance-only network and hands
// their coordinates to the adjustment.
//
// Of the two places where the circles around two placed points meet it takes the one nearer to the
// approximate coordinates (X and Y in the file, neither 0), or else the one that fits the distances
// to other placed points.
Outcome PlacePoints(AdjustmentContext& context);

}  // namespace brenu
