#pragma once

#include <cstdint>
#include <vector>

#include "core/sparse/graph.h"

namespace brenu {

// The elimination tree of a graph in an elimination order: the parent of a vertex is the first of
// its neighbours in the filled graph to be eliminated after it (Liu, The role of elimination trees
// in sparse factorization).
struct EliminationTree {
  std::vector<std::int32_t> order;           // by place: the vertex eliminated there
  std::vector<std::int32_t> placeOf;         // by vertex
  std::vector<std::int32_t> parent;          // by place; -1 for a root
  std::vector<std::int32_t> heightOfColumn;  // by place: the unknowns of its column in the factor,
                                             // its own ones counted too

  // Takes any order and rearranges it so that every subtree is without gaps, which leaves the
  // factor as sparse as it was.
  EliminationTree(const Graph& graph, std::vector<std::int32_t> eliminationOrder);

 private:
  void LinkParents(const Graph& graph);
  void Postorder();
  void CountColumns(const Graph& graph);
};

}  // namespace brenu
