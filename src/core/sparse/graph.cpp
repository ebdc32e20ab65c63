#include "core/sparse/graph.h"

#include <algorithm>
#include <numeric>

namespace brenu {

std::int64_t Graph::TotalWeight() const {
  return std::accumulate(weights.begin(), weights.end(), std::int64_t{0});
}

void Graph::AddNeighbour(std::int32_t v, std::int32_t edgeWeight) {
  neighbours.push_back(v);
  edgeWeights.push_back(edgeWeight);
}

void Graph::CloseVertex(std::int32_t weight) {
  first.push_back(static_cast<std::int64_t>(neighbours.size()));
  weights.push_back(weight);
}

Graph GroupGraph(const UnknownPattern& pattern) {
  const auto count = static_cast<std::size_t>(pattern.groupCount);
  std::vector<std::int32_t> weights(count, 0);
  for (const std::int32_t g : pattern.groupOfUnknown) ++weights[static_cast<std::size_t>(g)];

  // Both directions of every connection, sorted by their first end through counting.
  std::vector<std::int64_t> begin(count + 1, 0);
  for (const auto& [a, b] : pattern.connections) {
    ++begin[static_cast<std::size_t>(a) + 1];
    ++begin[static_cast<std::size_t>(b) + 1];
  }
  std::partial_sum(begin.begin(), begin.end(), begin.begin());
  std::vector<std::int32_t> ends(2 * pattern.connections.size());
  std::vector<std::int64_t> next(begin.begin(), begin.end() - 1);
  for (const auto& [a, b] : pattern.connections) {
    ends[static_cast<std::size_t>(next[static_cast<std::size_t>(a)]++)] = b;
    ends[static_cast<std::size_t>(next[static_cast<std::size_t>(b)]++)] = a;
  }

  Graph graph;
  for (std::size_t g = 0; g < count; ++g) {
    std::int32_t* const from = ends.data() + begin[g];
    std::int32_t* const to = ends.data() + begin[g + 1];
    std::sort(from, to);
    std::for_each(from, std::unique(from, to), [&](std::int32_t other) {
      if (other != static_cast<std::int32_t>(g)) graph.AddNeighbour(other, 1);
    });
    graph.CloseVertex(weights[g]);
  }
  return graph;
}

Graph Subgraph(const Graph& graph, const std::vector<std::uint8_t>& part, std::uint8_t wanted,
               std::vector<std::int32_t>& numberIn) {
  std::int32_t count = 0;
  for (std::size_t v = 0; v < part.size(); ++v) {
    if (part[v] == wanted) numberIn[v] = count++;
  }
  Graph result;
  for (std::int32_t v = 0; v < graph.Count(); ++v) {
    if (part[static_cast<std::size_t>(v)] != wanted) continue;
    const auto neighbours = graph.Neighbours(v);
    const auto edgeWeights = graph.EdgeWeights(v);
    for (std::size_t k = 0; k < neighbours.size(); ++k) {
      const auto other = static_cast<std::size_t>(neighbours[k]);
      if (part[other] == wanted) result.AddNeighbour(numberIn[other], edgeWeights[k]);
    }
    result.CloseVertex(graph.WeightOf(v));
  }
  return result;
}

}  // namespace brenu
