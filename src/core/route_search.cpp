#include "core/route_search.h"

namespace brenu {

RouteSearch::RouteSearch(const RouteGraph& graph)
    : m_graph(graph), m_nodes(static_cast<std::size_t>(graph.NodeCount())) {}

void RouteSearch::Offer(std::int32_t from, std::int32_t line) {
  const Node& start = At(from);
  const RouteLine& taken = m_graph.Line(line);
  const std::int32_t to = m_graph.Across(line, from);
  const double length = start.length + taken.length;
  const Moment found{line > start.found.line ? start.found.pass : start.found.pass + 1, line};
  Node& node = m_nodes[static_cast<std::size_t>(to)];
  if (node.run == m_run &&
      !(length < node.length || (length == node.length && found < node.found))) {
    return;
  }
  const double rise = start.rise + (taken.from == from ? taken.rise : -taken.rise);
  node = {length, rise, from, found, m_run};
  m_queue.push({length, found, to});
}

void RouteSearch::Run(std::int32_t source, std::int32_t excluded, std::int32_t target) {
  ++m_run;
  m_queue = {};
  constexpr Moment kStart{1, -1};
  m_nodes[static_cast<std::size_t>(source)] = {0.0, 0.0, source, kStart, m_run};
  m_queue.push({0.0, kStart, source});
  while (!m_queue.empty()) {
    const Candidate next = m_queue.top();
    m_queue.pop();
    if (next.length != At(next.node).length || next.found != At(next.node).found) {
      continue;  // a better route to it came later
    }
    if (next.node == target) return;
    if (m_graph.IsEnd(next.node) && next.node != source) continue;
    for (const std::int32_t line : m_graph.LinesAt(next.node)) {
      if (line != excluded) Offer(next.node, line);
    }
  }
}

bool RouteSearch::HasTwoLines(std::int32_t node) const {
  const std::int32_t before = Predecessor(node);
  return before != node && Predecessor(before) != before;
}

}  // namespace brenu
