// Places for the points of a connected network that has no coordinates: what is few lines apart
// stands close together.
#pragma once

#include <vector>

#include "report/sketch_graph.h"
#include "report/sketch_place.h"

namespace brenu {

// One place for each vertex of a connected graph, a line about 1 long; the longer side of the
// picture lies east, and what would be a long thin band is folded into rows.
std::vector<SketchPlace> StressLayout(const SketchGraph& graph);

}  // namespace brenu
