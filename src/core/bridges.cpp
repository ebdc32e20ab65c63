#include "core/bridges.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace brenu {

namespace {

// A depth-first search over the nodes; a line is a bridge when nothing below it leads back above.
class BridgeSearch {
 public:
  explicit BridgeSearch(const RouteGraph& graph) : m_graph(graph) {
    m_nodes.Assign(graph.NodeCount(), Node{});
    m_isBridge.Assign(graph.Lines().Size(), 0);
  }

  Table<LineNo, char> Run() {
    for (const Place node : m_graph.Places()) {
      if (m_nodes[node].order == 0) Explore(node);
    }
    return std::move(m_isBridge);
  }

 private:
  struct Node {
    std::int32_t order = 0;   // when the search reached it, 0 for not yet
    std::int32_t lowest = 0;  // the earliest node that it, or what lies below it, leads to
  };
  struct Visit {
    Place node;
    LineNo via;        // the line by which the search came here, none at the start
    std::size_t next;  // the next of the node's lines to look at
  };

  void Enter(Place node, LineNo via) {
    ++m_count;
    m_nodes[node] = {m_count, m_count};
    m_path.push_back({node, via, 0});
  }

  void Explore(Place start) {
    Enter(start, LineNo());
    while (!m_path.empty()) {
      Visit& visit = m_path.back();
      const auto steps = m_graph.StepsFrom(visit.node);
      if (visit.next == steps.size()) {
        Leave();
        continue;
      }
      const RouteStep& step = steps[visit.next++];
      if (step.line == visit.via) continue;
      if (m_nodes[step.to].order == 0) {
        Enter(step.to, step.line);
      } else {
        std::int32_t& lowest = m_nodes[visit.node].lowest;
        lowest = std::min(lowest, m_nodes[step.to].order);
      }
    }
  }

  void Leave() {
    const Visit done = m_path.back();
    m_path.pop_back();
    if (m_path.empty()) return;
    Node& above = m_nodes[m_path.back().node];
    above.lowest = std::min(above.lowest, m_nodes[done.node].lowest);
    if (m_nodes[done.node].lowest > above.order) m_isBridge[done.via] = 1;
  }

  const RouteGraph& m_graph;
  std::int32_t m_count = 0;
  Table<Place, Node> m_nodes;
  std::vector<Visit> m_path;
  Table<LineNo, char> m_isBridge;
};

}  // namespace

Table<LineNo, char> FindBridges(const RouteGraph& graph) { return BridgeSearch(graph).Run(); }

}  // namespace brenu
