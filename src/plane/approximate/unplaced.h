#pragma once

#include "core/finding.h"
#include "plane/approximate/places.h"

namespace brenu::approximate {

// A warning for each new point that has no place, or for each group of them that hang together,
// which says how many directions and distances tie it to points that have one.
Findings ExplainUnplaced(const NetworkLayout& layout, const Rays& rays, const Places& places);

}  // namespace brenu::approximate
