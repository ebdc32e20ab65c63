#pragma once

#include <cstdint>
#include <vector>

#include "core/sparse/graph.h"

namespace brenu {

// An elimination order of the vertices of a graph, first to last, that keeps the factor of a matrix
// with that graph sparse: vertices with at most two neighbours first, one after the other, then the
// rest by nested dissection (George, Nested dissection of a regular finite element mesh).
std::vector<std::int32_t> FillReducingOrder(const Graph& graph);

// The parts of it.

// Eliminates vertices with at most two neighbours as long as there are any.  Appends them to
// `order` and returns what remains; `vertices` receives the old numbers of the remaining vertices.
Graph EliminateChains(const Graph& graph, std::vector<std::int32_t>& order,
                      std::vector<std::int32_t>& vertices);

// Both parts beside a separator come before it, and so on in the parts; small parts are ordered by
// minimum degree.
std::vector<std::int32_t> NestedDissectionOrder(Graph graph);

// For small graphs: always the vertex with the fewest neighbours, which are then connected with
// each other.
std::vector<std::int32_t> MinimumDegreeOrder(const Graph& graph);

}  // namespace brenu
