#pragma once

#include <vector>

#include "plane/approximate/orientation_edges.h"

namespace brenu::approximate {

// The circles of all stations, turned as their edges agree best.
struct Orientations {
  Table<Node, double> orientation;  // radians, within its component
  // Stations that edges relate to each other; what belongs to kWorld's is oriented to the grid.
  Table<Node, std::int32_t> component;
  std::int32_t componentCount = 0;
};

// A spanning tree of the best edges first, then least squares over all of them with weights that
// fade out what contradicts the rest (D. Martinec, T. Pajdla, Robust rotation and translation
// estimation in multiview reconstruction, have the principle).
Orientations SolveOrientations(std::size_t nodeCount, std::vector<OrientationEdge> edges);

}  // namespace brenu::approximate
