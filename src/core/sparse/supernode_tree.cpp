#include "core/sparse/supernode_tree.h"

#include <algorithm>
#include <numeric>

namespace brenu {

namespace {

std::size_t At(std::int32_t v) { return static_cast<std::size_t>(v); }

// A block in the making, in numbers of unknowns.
struct Block {
  std::int64_t width = 0;  // columns
  std::int64_t rows = 0;   // below the columns
  std::int64_t zeros = 0;  // elements that are stored without need

  std::int64_t Size() const { return width * (width + 1) / 2 + width * rows; }
};

Block Joined(const Block& child, const Block& parent) {
  Block joined{child.width + parent.width, parent.rows, 0};
  joined.zeros =
      child.zeros + parent.zeros + child.width * (parent.width + parent.rows - child.rows);
  return joined;
}

bool IsWorthwhile(const Block& joined) {
  struct Limit {
    std::int64_t width;
    double zeroShare;
  };
  constexpr Limit kLimits[] = {{16, 0.3}, {48, 0.1}, {1000000000, 0.02}};
  for (const Limit& limit : kLimits) {
    if (joined.width > limit.width) continue;
    return static_cast<double>(joined.zeros) <=
           limit.zeroShare * static_cast<double>(joined.Size());
  }
  return false;
}

// The columns with exactly the same rows below.  By place: the number of its block.
std::vector<std::int32_t> ExactBlocks(const Graph& graph, const EliminationTree& tree,
                                      std::vector<Block>& blocks) {
  std::vector<std::int32_t> blockOf(tree.order.size());
  for (std::size_t k = 0; k < tree.order.size(); ++k) {
    const std::int32_t weight = graph.WeightOf(tree.order[k]);
    const std::int32_t rows = tree.heightOfColumn[k] - weight;
    const bool continues = k > 0 && tree.parent[k - 1] == static_cast<std::int32_t>(k) &&
                           blocks.back().rows == tree.heightOfColumn[k];
    if (!continues) blocks.push_back({});
    blocks.back().width += weight;
    blocks.back().rows = rows;
    blockOf[k] = static_cast<std::int32_t>(blocks.size()) - 1;
  }
  return blockOf;
}

}  // namespace

SupernodeTree::SupernodeTree(const Graph& graph, const EliminationTree& tree) {
  std::vector<Block> blocks;
  const std::vector<std::int32_t> blockOf = ExactBlocks(graph, tree, blocks);
  std::vector<std::int32_t> parentOf(blocks.size(), -1);  // by exact block
  for (std::size_t k = 0; k < blockOf.size(); ++k) {
    const std::int32_t above = tree.parent[k];
    if (above >= 0 && blockOf[At(above)] != blockOf[k])
      parentOf[At(blockOf[k])] = blockOf[At(above)];
  }

  // A parent's number is higher than its children's: all below a block is settled at its turn.
  std::vector<char> joinsParent(blocks.size(), 0);
  for (std::size_t b = 0; b < blocks.size(); ++b) {
    if (parentOf[b] < 0) continue;
    const Block joined = Joined(blocks[b], blocks[At(parentOf[b])]);
    if (!IsWorthwhile(joined)) continue;
    blocks[At(parentOf[b])] = joined;
    joinsParent[b] = 1;
  }

  // Supernodes come in the order of the blocks at their tops.
  std::vector<std::int32_t> supernodeOf(blocks.size());
  std::int32_t next =
      static_cast<std::int32_t>(std::count(joinsParent.begin(), joinsParent.end(), char{0}));
  parent.assign(At(next), -1);
  for (std::size_t b = blocks.size(); b-- > 0;) {
    const std::int32_t above = parentOf[b] < 0 ? -1 : supernodeOf[At(parentOf[b])];
    supernodeOf[b] = joinsParent[b] != 0 ? above : --next;
    if (joinsParent[b] == 0) parent[At(next)] = above;
  }

  firstPlace.assign(parent.size() + 1, 0);
  for (const std::int32_t b : blockOf) ++firstPlace[At(supernodeOf[At(b)]) + 1];
  std::partial_sum(firstPlace.begin(), firstPlace.end(), firstPlace.begin());
  vertices.resize(tree.order.size());
  std::vector<std::int32_t> place(firstPlace.begin(), firstPlace.end() - 1);
  for (std::size_t k = 0; k < blockOf.size(); ++k) {
    vertices[At(place[At(supernodeOf[At(blockOf[k])])]++)] = tree.order[k];
  }
}

}  // namespace brenu
