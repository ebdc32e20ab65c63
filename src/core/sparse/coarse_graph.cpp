#include "core/sparse/coarse_graph.h"

#include <algorithm>
#include <numeric>
#include <random>

namespace brenu {

namespace {

// The vertices in an order that looks random and is the same everywhere.
std::vector<std::int32_t> ShuffledVertices(std::int32_t count) {
  std::vector<std::int32_t> order(static_cast<std::size_t>(count));
  std::iota(order.begin(), order.end(), 0);
  std::minstd_rand random;
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
  return order;
}

// By vertex: the vertex it is joined with, itself when there is none.
std::vector<std::int32_t> Match(const Graph& graph, std::int64_t heaviest) {
  std::vector<std::int32_t> partner(static_cast<std::size_t>(graph.Count()), -1);
  for (const std::int32_t v : ShuffledVertices(graph.Count())) {
    if (partner[static_cast<std::size_t>(v)] >= 0) continue;
    std::int32_t best = v;
    std::int32_t bestWeight = 0;
    const auto neighbours = graph.Neighbours(v);
    const auto edgeWeights = graph.EdgeWeights(v);
    for (std::size_t k = 0; k < neighbours.size(); ++k) {
      const std::int32_t u = neighbours[k];
      if (partner[static_cast<std::size_t>(u)] >= 0 || edgeWeights[k] <= bestWeight) continue;
      if (std::int64_t{graph.WeightOf(v)} + graph.WeightOf(u) > heaviest) continue;
      best = u;
      bestWeight = edgeWeights[k];
    }
    partner[static_cast<std::size_t>(v)] = best;
    partner[static_cast<std::size_t>(best)] = v;
  }
  return partner;
}

}  // namespace

CoarseGraph Coarsen(const Graph& fine, std::int64_t heaviest) {
  const std::vector<std::int32_t> partner = Match(fine, heaviest);
  CoarseGraph coarse;
  coarse.coarseOf.resize(partner.size());
  std::vector<std::int32_t> leaders;  // by coarse vertex: the lower of its two fine ones
  for (std::int32_t v = 0; v < fine.Count(); ++v) {
    const std::int32_t other = partner[static_cast<std::size_t>(v)];
    if (other < v) continue;
    coarse.coarseOf[static_cast<std::size_t>(v)] = static_cast<std::int32_t>(leaders.size());
    coarse.coarseOf[static_cast<std::size_t>(other)] = static_cast<std::int32_t>(leaders.size());
    leaders.push_back(v);
  }

  Graph& graph = coarse.graph;
  std::vector<std::int64_t> placeOf(leaders.size(), -1);  // of a neighbour in the list being made
  for (std::size_t c = 0; c < leaders.size(); ++c) {
    const std::int64_t begin = graph.first.back();
    const auto addNeighboursOf = [&](std::int32_t v) {
      const auto neighbours = fine.Neighbours(v);
      const auto edgeWeights = fine.EdgeWeights(v);
      for (std::size_t k = 0; k < neighbours.size(); ++k) {
        const std::int32_t u = coarse.coarseOf[static_cast<std::size_t>(neighbours[k])];
        if (u == static_cast<std::int32_t>(c)) continue;
        std::int64_t& place = placeOf[static_cast<std::size_t>(u)];
        if (place < begin) {
          place = static_cast<std::int64_t>(graph.neighbours.size());
          graph.AddNeighbour(u, edgeWeights[k]);
        } else {
          graph.edgeWeights[static_cast<std::size_t>(place)] += edgeWeights[k];
        }
      }
    };
    const std::int32_t leader = leaders[c];
    const std::int32_t other = partner[static_cast<std::size_t>(leader)];
    addNeighboursOf(leader);
    if (other != leader) addNeighboursOf(other);
    graph.CloseVertex(fine.WeightOf(leader) + (other == leader ? 0 : fine.WeightOf(other)));
  }
  return coarse;
}

}  // namespace brenu
