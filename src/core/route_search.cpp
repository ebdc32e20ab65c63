#include "core/route_search.h"

namespace brenu {

RouteSearch::RouteSearch(const RouteGraph& graph)
    : m_graph(graph), m_nodes(static_cast<std::size_t>(graph.NodeCount())) {}

void RouteSearch::Offer(std::int32_t from, const RouteStep& step) {
  const Node& start = At(from);
  const double length = start.length + step.length;
  const bool samePass = step.line > start.found.line;
  const Moment found{samePass ? start.found.pass : start.found.pass + 1, step.line};
  Node& node = m_nodes[static_cast<std::size_t>(step.to)];
  if (node.run == m_run &&
      !(length < node.length || (length == node.length && found < node.found))) {
    return;
  }
  node = {length, start.rise + step.rise, from, found, m_run};
  m_queue.push({length, found, step.to});
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
    for (const RouteStep& step : m_graph.StepsFrom(next.node)) {
      if (step.line != excluded) Offer(next.node, step);
    }
  }
}

bool RouteSearch::HasTwoLines(std::int32_t node) const {
  const std::int32_t before = Predecessor(node);
  return before != node && Predecessor(before) != before;
}

}  // namespace brenu
