#pragma once

#include "core/finding.h"
#include "plane/approximate/rays.h"

namespace brenu {

// Approximate coordinates of all points that the observations place, in whatever order they were
// observed: X and Y in `coords`, which holds those of the control points.  Points that cannot be
// placed stay without; each is a warning that says what there is for it.
//
// Circles are oriented against each other first, over the whole network at once, and points placed
// from those that are; parts of the network that have a shape of their own are fitted to what is
// placed; at last all points are settled by least squares with the circles held.  Each step lets
// most of the observations vote down the others.
Findings PlaceByShape(const PlaneNet& net, const approximate::Selection& selection,
                      Coordinates& coords);

}  // namespace brenu
