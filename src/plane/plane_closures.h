#pragma once

#include <vector>

#include "plane/coordinates.h"
#include "plane/traverse_table.h"

namespace brenu {

// Closure errors of connecting and closed traverses from approximate coordinates, appended as
// records whose flag `heightWithinLimit` tells whether both misclosures are within the tolerance.
// Returns the traverses.
TraverseTable CalcTraverseCloseErrors(const PlaneNet& net, const Coordinates& coords,
                                      std::vector<CloseError>& records);

}  // namespace brenu
