#pragma once

#include "core/finding.h"
#include "plane/coordinates.h"

namespace brenu {

// Places all new points, whose coordinates are unknown, from the known ones: stations are oriented
// and their targets placed by bearing and distance or by intersection, in passes over the stations
// in name order; the first station that can place a point decides.  Fails when a point cannot be
// reached; what was placed stays.
Outcome PlaceByPasses(const NetworkLayout& net, Coordinates& coords);

}  // namespace brenu
