#include "core/route_search.h"

#include <numeric>

namespace brenu {

RouteSearch::RouteSearch(const RouteGraph& graph)
    : m_graph(graph), m_routes(static_cast<std::size_t>(graph.NodeCount())) {}

void RouteSearch::Offer(std::int32_t from, const RouteStep& step) {
  const Route& start = At(from);
  const double length = start.length + step.length;
  Route& route = m_routes[static_cast<std::size_t>(step.to)];
  const bool isReached = route.run == m_run;
  if (isReached && length > route.length) return;
  const bool samePass = step.line > start.found.line;
  const Moment found{samePass ? start.found.pass : start.found.pass + 1, step.line};
  if (isReached && length == route.length && !(found < route.found)) return;
  route = {length, found, from, m_run};
  m_queue.push({length, found, step.to});
}

void RouteSearch::Run(std::int32_t source, std::int32_t excluded, std::int32_t target) {
  ++m_run;
  m_queue = {};
  constexpr Moment kStart{1, -1};
  const std::int32_t start = m_graph.PlaceOf(source);
  const std::int32_t goal = target == kNone ? kNone : m_graph.PlaceOf(target);
  m_routes[static_cast<std::size_t>(start)] = {0.0, kStart, start, m_run};
  m_queue.push({0.0, kStart, start});
  while (!m_queue.empty()) {
    const Candidate next = m_queue.top();
    m_queue.pop();
    if (next.length != At(next.place).length || next.found != At(next.place).found) {
      continue;  // a better route to it came later
    }
    if (next.place == goal) return;
    if (m_graph.IsEnd(next.place) && next.place != start) continue;
    for (const RouteStep& step : m_graph.StepsFrom(next.place)) {
      if (step.line != excluded) Offer(next.place, step);
    }
  }
}

double RouteSearch::Rise(std::int32_t node) const {
  std::vector<double> rises;  // of the lines from the end on
  for (std::int32_t place = m_graph.PlaceOf(node); At(place).predecessor != place;
       place = At(place).predecessor) {
    const RouteLine& line = m_graph.Line(At(place).found.line);
    rises.push_back(line.to == m_graph.NodeAt(place) ? line.rise : -line.rise);
  }
  return std::accumulate(rises.rbegin(), rises.rend(), 0.0);
}

bool RouteSearch::HasTwoLines(std::int32_t node) const {
  const std::int32_t before = Predecessor(node);
  return before != node && Predecessor(before) != before;
}

}  // namespace brenu
