#include "core/sparse/separator.h"

#include <algorithm>
#include <random>

#include "core/sparse/coarse_graph.h"

namespace brenu {

namespace {

constexpr std::int32_t kCoarsestCount = 60;      // graphs this small are cut directly
constexpr double kSmallestProgress = 0.9;        // coarsening stops when it shrinks less than this
constexpr int kTrials = 8;                       // first cuts from different vertices
constexpr std::int64_t kCoarseVertexShare = 30;  // no coarse vertex above 1/30 of the whole

// Part 0 is grown around a vertex, breadth first, until it has half the weight; what surrounds it
// becomes the separator.
Separation GrowFrom(const Graph& graph, std::int32_t start) {
  Separation cut;
  cut.part.assign(static_cast<std::size_t>(graph.Count()), 1);
  const std::int64_t half = graph.TotalWeight() / 2;
  std::int64_t grown = 0;
  std::vector<std::int32_t> queue = {start};
  std::vector<char> seen(cut.part.size(), 0);
  seen[static_cast<std::size_t>(start)] = 1;
  std::int32_t nextStart = 0;  // for graphs that are not connected
  for (std::size_t k = 0; grown < half; ++k) {
    if (k == queue.size()) {
      while (seen[static_cast<std::size_t>(nextStart)] != 0) ++nextStart;
      queue.push_back(nextStart);
      seen[static_cast<std::size_t>(nextStart)] = 1;
    }
    const std::int32_t v = queue[k];
    cut.part[static_cast<std::size_t>(v)] = 0;
    grown += graph.WeightOf(v);
    for (const std::int32_t u : graph.Neighbours(v)) {
      if (seen[static_cast<std::size_t>(u)] != 0) continue;
      seen[static_cast<std::size_t>(u)] = 1;
      queue.push_back(u);
    }
  }
  for (const std::int32_t v : queue) {
    if (cut.part[static_cast<std::size_t>(v)] != 0) continue;
    for (const std::int32_t u : graph.Neighbours(v)) {
      std::uint8_t& part = cut.part[static_cast<std::size_t>(u)];
      if (part == 1) part = Separation::kSeparator;
    }
  }
  cut.Weigh(graph);
  return cut;
}

Separation CutDirectly(const Graph& graph) {
  std::minstd_rand random;
  Separation best;
  for (int i = 0; i < kTrials; ++i) {
    const auto start = static_cast<std::int32_t>(random() % graph.weights.size());
    Separation cut = GrowFrom(graph, start);
    RefineSeparator(graph, cut);
    if (best.part.empty() || cut.IsBetterThan(best)) best = std::move(cut);
  }
  return best;
}

}  // namespace

void Separation::Weigh(const Graph& graph) {
  weights = {};
  for (std::size_t v = 0; v < part.size(); ++v) {
    weights[part[v]] += graph.weights[v];
  }
}

bool Separation::IsBetterThan(const Separation& other) const {
  const auto heavier = [](const Separation& s) { return std::max(s.weights[0], s.weights[1]); };
  const bool balanced = heavier(*this) <= HeaviestAllowed();
  const bool otherBalanced = heavier(other) <= other.HeaviestAllowed();
  if (balanced != otherBalanced) return balanced;
  if (weights[2] != other.weights[2]) return weights[2] < other.weights[2];
  return heavier(*this) < heavier(other);
}

Separation FindSeparator(const Graph& graph) {
  std::vector<CoarseGraph> levels;
  const std::int64_t heaviest = graph.TotalWeight() / kCoarseVertexShare + 1;
  const Graph* coarsest = &graph;
  while (coarsest->Count() > kCoarsestCount) {
    CoarseGraph next = Coarsen(*coarsest, heaviest);
    const bool stuck = next.graph.Count() > kSmallestProgress * coarsest->Count();
    if (stuck) break;
    levels.push_back(std::move(next));
    coarsest = &levels.back().graph;
  }

  Separation cut = CutDirectly(*coarsest);
  while (!levels.empty()) {
    const CoarseGraph coarse = std::move(levels.back());
    levels.pop_back();
    std::vector<std::uint8_t> part(coarse.coarseOf.size());
    std::transform(coarse.coarseOf.begin(), coarse.coarseOf.end(), part.begin(),
                   [&](std::int32_t c) { return cut.part[static_cast<std::size_t>(c)]; });
    cut.part = std::move(part);
    RefineSeparator(levels.empty() ? graph : levels.back().graph, cut);
  }
  return cut;
}

}  // namespace brenu
