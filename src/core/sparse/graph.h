#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/unknown_pattern.h"

namespace brenu {

// An undirected graph without loops and repeated edges; each edge stands in the lists of both ends.
struct Graph {
  std::vector<std::int64_t> first{0};     // by vertex, with one entry more: where its list begins
  std::vector<std::int32_t> neighbours;   // the lists one after the other
  std::vector<std::int32_t> edgeWeights;  // beside `neighbours`: how many original edges this is
  std::vector<std::int32_t> weights;      // by vertex: how many unknowns it stands for

  std::int32_t Count() const { return static_cast<std::int32_t>(weights.size()); }
  std::int64_t TotalWeight() const;
  std::int32_t WeightOf(std::int32_t v) const { return weights[static_cast<std::size_t>(v)]; }
  std::span<const std::int32_t> Neighbours(std::int32_t v) const { return List(neighbours, v); }
  std::span<const std::int32_t> EdgeWeights(std::int32_t v) const { return List(edgeWeights, v); }

  // Builders add the neighbours of a vertex and then close its list.
  void AddNeighbour(std::int32_t v, std::int32_t edgeWeight);
  void CloseVertex(std::int32_t weight);

 private:
  std::span<const std::int32_t> List(const std::vector<std::int32_t>& all, std::int32_t v) const {
    const auto i = static_cast<std::size_t>(v);
    return std::span(all).subspan(static_cast<std::size_t>(first[i]),
                                  static_cast<std::size_t>(first[i + 1] - first[i]));
  }
};

// The graph of the groups of a pattern.
Graph GroupGraph(const UnknownPattern& pattern);

// The part of a graph on the vertices for which part[v] == wanted, in their order.  `numberIn`
// receives their numbers in the new graph (by old vertex; others keep what stands there).
Graph Subgraph(const Graph& graph, const std::vector<std::uint8_t>& part, std::uint8_t wanted,
               std::vector<std::int32_t>& numberIn);

}  // namespace brenu
