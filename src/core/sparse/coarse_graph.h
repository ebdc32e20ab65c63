#pragma once

#include <cstdint>
#include <vector>

#include "core/sparse/graph.h"

namespace brenu {

// A graph of about half the size, made by joining neighbours in pairs.
struct CoarseGraph {
  Graph graph;
  std::vector<std::int32_t> coarseOf;  // by vertex of the fine graph: the vertex that holds it
};

// Joins each vertex with the free neighbour to which its edge is heaviest, so that the edges left
// over, of which separators are made, are light.  No vertex becomes heavier than `heaviest`.
CoarseGraph Coarsen(const Graph& fine, std::int64_t heaviest);

}  // namespace brenu
