// Takes points apart that stand on the same place.
#pragma once

#include <cstdint>
#include <vector>

#include "report/sketch_place.h"

namespace brenu {

// Moves those of `movable` that stand closer than `distance` to another point to the nearest free
// place.  The cost grows with the number of points, however many stand on one place.
void Separate(std::vector<SketchPlace>& places, const std::vector<bool>& movable, double distance);

}  // namespace brenu
