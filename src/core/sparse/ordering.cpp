#include "core/sparse/ordering.h"

namespace brenu {

std::vector<std::int32_t> FillReducingOrder(const Graph& graph) {
  std::vector<std::int32_t> order;
  order.reserve(graph.weights.size());
  std::vector<std::int32_t> vertices;
  Graph rest = EliminateChains(graph, order, vertices);
  for (const std::int32_t v : NestedDissectionOrder(std::move(rest))) {
    order.push_back(vertices[static_cast<std::size_t>(v)]);
  }
  return order;
}

}  // namespace brenu
