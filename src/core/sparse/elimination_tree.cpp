#include "core/sparse/elimination_tree.h"

#include <utility>

namespace brenu {

namespace {

std::size_t At(std::int32_t v) { return static_cast<std::size_t>(v); }

std::vector<std::int32_t> Inverse(const std::vector<std::int32_t>& order) {
  std::vector<std::int32_t> placeOf(order.size());
  for (std::size_t k = 0; k < order.size(); ++k) {
    placeOf[At(order[k])] = static_cast<std::int32_t>(k);
  }
  return placeOf;
}

}  // namespace

EliminationTree::EliminationTree(const Graph& graph, std::vector<std::int32_t> eliminationOrder)
    : order(std::move(eliminationOrder)), placeOf(Inverse(order)) {
  LinkParents(graph);
  Postorder();
  CountColumns(graph);
}

// Every earlier neighbour of place k has k as an ancestor; shortcuts towards the roots keep the
// climbs short.
void EliminationTree::LinkParents(const Graph& graph) {
  parent.assign(order.size(), -1);
  std::vector<std::int32_t> shortcut(order.size(), -1);
  for (std::int32_t k = 0; k < graph.Count(); ++k) {
    for (const std::int32_t neighbour : graph.Neighbours(order[At(k)])) {
      for (std::int32_t i = placeOf[At(neighbour)]; i >= 0 && i < k;) {
        const std::int32_t next = std::exchange(shortcut[At(i)], k);
        if (next < 0) parent[At(i)] = k;
        i = next;
      }
    }
  }
}

void EliminationTree::Postorder() {
  const std::size_t count = order.size();
  std::vector<std::int32_t> firstChild(count, -1);
  std::vector<std::int32_t> nextSibling(count, -1);
  std::vector<std::int32_t> stack;  // roots, later the path to the current place
  for (std::size_t k = count; k-- > 0;) {
    const auto place = static_cast<std::int32_t>(k);
    if (parent[k] < 0) {
      stack.push_back(place);
    } else {
      nextSibling[k] = std::exchange(firstChild[At(parent[k])], place);
    }
  }
  std::vector<std::int32_t> newPlace(count);
  std::vector<std::int32_t> newOrder;
  newOrder.reserve(count);
  while (!stack.empty()) {
    const std::int32_t top = stack.back();
    std::int32_t& child = firstChild[At(top)];
    if (child >= 0) {
      stack.push_back(std::exchange(child, nextSibling[At(child)]));
      continue;
    }
    stack.pop_back();
    newPlace[At(top)] = static_cast<std::int32_t>(newOrder.size());
    newOrder.push_back(order[At(top)]);
  }
  std::vector<std::int32_t> newParent(count, -1);
  for (std::size_t k = 0; k < count; ++k) {
    if (parent[k] >= 0) newParent[At(newPlace[k])] = newPlace[At(parent[k])];
  }
  order = std::move(newOrder);
  parent = std::move(newParent);
  placeOf = Inverse(order);
}

// Row k of the factor has elements in the columns on the paths from its earlier neighbours up to k.
void EliminationTree::CountColumns(const Graph& graph) {
  heightOfColumn.resize(order.size());
  std::vector<std::int32_t> lastRow(order.size(), -1);  // by place: the last row counted in it
  for (std::size_t k = 0; k < order.size(); ++k) {
    const auto row = static_cast<std::int32_t>(k);
    const std::int32_t weight = graph.WeightOf(order[k]);
    heightOfColumn[k] = weight;
    lastRow[k] = row;
    for (const std::int32_t neighbour : graph.Neighbours(order[k])) {
      std::int32_t i = placeOf[At(neighbour)];
      if (i > row) continue;
      for (; lastRow[At(i)] != row; i = parent[At(i)]) {
        heightOfColumn[At(i)] += weight;
        lastRow[At(i)] = row;
      }
    }
  }
}

}  // namespace brenu
