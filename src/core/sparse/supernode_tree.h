#pragma once

#include <cstdint>
#include <vector>

#include "core/sparse/elimination_tree.h"

namespace brenu {

// The columns of a factor gathered into supernodes: columns that are eliminated one after the other
// and have (nearly) the same rows below, so that they are computed as one dense block.  Supernodes
// are numbered so that every subtree is without gaps, children before their parent.
struct SupernodeTree {
  std::vector<std::int32_t> vertices;    // in the final elimination order
  std::vector<std::int32_t> firstPlace;  // by supernode, with one entry more: its first vertex
  std::vector<std::int32_t> parent;      // by supernode; -1 for a root

  std::int32_t Count() const { return static_cast<std::int32_t>(parent.size()); }

  // A child is joined with its parent where that brings few zeros into the block, relative to its
  // size: small blocks cost more for being small.
  SupernodeTree(const Graph& graph, const EliminationTree& tree);
};

}  // namespace brenu
