#include <algorithm>

#include "core/sparse/ordering.h"

namespace brenu {

namespace {

std::size_t At(std::int32_t v) { return static_cast<std::size_t>(v); }

// A graph that loses vertices.
class ShrinkingGraph {
 public:
  explicit ShrinkingGraph(const Graph& graph) : m_lists(graph.weights.size()) {
    for (std::int32_t v = 0; v < graph.Count(); ++v) {
      const auto neighbours = graph.Neighbours(v);
      m_lists[At(v)].assign(neighbours.begin(), neighbours.end());
      m_degree.push_back(static_cast<std::int32_t>(neighbours.size()));
    }
    m_alive.assign(m_lists.size(), 1);
  }

  bool IsAlive(std::int32_t v) const { return m_alive[At(v)] != 0; }
  std::int32_t Degree(std::int32_t v) const { return m_degree[At(v)]; }
  const std::vector<std::int32_t>& List(std::int32_t v) const { return m_lists[At(v)]; }

  // Takes out a vertex with at most two neighbours, connects these and returns them (-1 for none).
  std::pair<std::int32_t, std::int32_t> Eliminate(std::int32_t v) {
    m_alive[At(v)] = 0;
    std::int32_t ends[2] = {-1, -1};
    int found = 0;
    for (const std::int32_t u : m_lists[At(v)]) {
      if (IsAlive(u)) ends[found++] = u;
    }
    for (int k = 0; k < found; ++k) --m_degree[At(ends[k])];
    if (found == 2 && !AreConnected(ends[0], ends[1])) {
      for (const int k : {0, 1}) {
        m_lists[At(ends[k])].push_back(ends[1 - k]);
        ++m_degree[At(ends[k])];
      }
    }
    return {ends[0], ends[1]};
  }

 private:
  // From the back of the shorter list, where the connections made here stand.
  bool AreConnected(std::int32_t a, std::int32_t b) const {
    if (m_lists[At(b)].size() < m_lists[At(a)].size()) std::swap(a, b);
    const auto& list = m_lists[At(a)];
    return std::find(list.rbegin(), list.rend(), b) != list.rend();
  }

  std::vector<std::vector<std::int32_t>> m_lists;  // by vertex: its neighbours, lost ones too
  std::vector<std::int32_t> m_degree;              // by vertex: how many of them are alive
  std::vector<char> m_alive;
};

}  // namespace

Graph EliminateChains(const Graph& graph, std::vector<std::int32_t>& order,
                      std::vector<std::int32_t>& vertices) {
  ShrinkingGraph shrinking(graph);
  // Ends of branches go before vertices inside a chain: they connect nobody.
  std::vector<std::int32_t> branchEnds;
  std::vector<std::int32_t> chainLinks;
  const auto consider = [&](std::int32_t v) {
    if (v < 0 || shrinking.Degree(v) > 2) return;
    (shrinking.Degree(v) == 2 ? chainLinks : branchEnds).push_back(v);
  };
  for (std::int32_t v = graph.Count(); v-- > 0;) consider(v);
  while (!branchEnds.empty() || !chainLinks.empty()) {
    auto& due = branchEnds.empty() ? chainLinks : branchEnds;
    const std::int32_t v = due.back();
    due.pop_back();
    if (!shrinking.IsAlive(v)) continue;
    order.push_back(v);
    const auto [a, b] = shrinking.Eliminate(v);
    consider(a);
    consider(b);
  }

  std::vector<std::int32_t> numberIn(graph.weights.size(), -1);
  for (std::int32_t v = 0; v < graph.Count(); ++v) {
    if (!shrinking.IsAlive(v)) continue;
    numberIn[At(v)] = static_cast<std::int32_t>(vertices.size());
    vertices.push_back(v);
  }
  Graph rest;
  for (const std::int32_t v : vertices) {
    for (const std::int32_t u : shrinking.List(v)) {
      if (shrinking.IsAlive(u)) rest.AddNeighbour(numberIn[At(u)], 1);
    }
    rest.CloseVertex(graph.WeightOf(v));
  }
  return rest;
}

}  // namespace brenu
