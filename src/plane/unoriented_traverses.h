#pragma once

#include "plane/plane_adjustment.h"
#include "plane/traverse_table.h"

namespace brenu {

// Coordinates of connecting traverses from angles and sides alone, without orientation at either
// end (format 1), entered into a computation that has only begun.  Fails without such a traverse,
// or when it leaves a point with measured sides out.
Outcome AdjustWithoutOrientation(PlaneAdjustment& work, TraverseTable& table);

}  // namespace brenu
