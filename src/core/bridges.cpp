#include "core/bridges.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace brenu {

namespace {

// A depth-first search over the nodes; a line is a bridge when nothing below it leads back above.
class BridgeSearch {
 public:
  explicit BridgeSearch(const RouteGraph& graph)
      : m_graph(graph),
        m_nodes(static_cast<std::size_t>(graph.NodeCount())),
        m_isBridge(static_cast<std::size_t>(graph.LineCount()), 0) {}

  std::vector<char> Run() {
    for (std::int32_t node = 0; node < m_graph.NodeCount(); ++node) {
      if (At(node).order == 0) Explore(node);
    }
    return std::move(m_isBridge);
  }

 private:
  struct Node {
    std::int32_t order = 0;   // when the search reached it, 0 for not yet
    std::int32_t lowest = 0;  // the earliest node that it, or what lies below it, leads to
  };
  struct Visit {
    std::int32_t node;
    std::int32_t via;  // the line by which the search came here, -1 at the start
    std::size_t next;  // the next of the node's lines to look at
  };

  Node& At(std::int32_t node) { return m_nodes[static_cast<std::size_t>(node)]; }

  void Enter(std::int32_t node, std::int32_t via) {
    ++m_count;
    At(node) = {m_count, m_count};
    m_path.push_back({node, via, 0});
  }

  void Explore(std::int32_t start) {
    Enter(start, -1);
    while (!m_path.empty()) {
      Visit& visit = m_path.back();
      const auto steps = m_graph.StepsFrom(visit.node);
      if (visit.next == steps.size()) {
        Leave();
        continue;
      }
      const RouteStep& step = steps[visit.next++];
      if (step.line == visit.via) continue;
      const std::int32_t node = visit.node;
      if (At(step.to).order == 0) {
        Enter(step.to, step.line);
      } else {
        At(node).lowest = std::min(At(node).lowest, At(step.to).order);
      }
    }
  }

  void Leave() {
    const Visit done = m_path.back();
    m_path.pop_back();
    if (m_path.empty()) return;
    Node& above = At(m_path.back().node);
    above.lowest = std::min(above.lowest, At(done.node).lowest);
    if (At(done.node).lowest > above.order) m_isBridge[static_cast<std::size_t>(done.via)] = 1;
  }

  const RouteGraph& m_graph;
  std::int32_t m_count = 0;
  std::vector<Node> m_nodes;
  std::vector<Visit> m_path;
  std::vector<char> m_isBridge;
};

}  // namespace

std::vector<char> FindBridges(const RouteGraph& graph) { return BridgeSearch(graph).Run(); }

}  // namespace brenu
