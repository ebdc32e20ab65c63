#include "core/route_search.h"

#include <numeric>

namespace brenu {

RouteSearch::RouteSearch(const RouteGraph& graph) : m_graph(graph) {
  m_routes.Assign(graph.NodeCount(), Route{});
}

void RouteSearch::Offer(Place from, const RouteStep& step) {
  const Route& start = m_routes[from];
  const double length = start.length + step.length;
  Route& route = m_routes[step.to];
  const bool isReached = route.run == m_run;
  if (isReached && length > route.length) return;
  const bool samePass = step.line > start.found.line;
  const Moment found{samePass ? start.found.pass : start.found.pass + 1, step.line};
  if (isReached && length == route.length && !(found < route.found)) return;
  route = {length, found, from, m_run};
  m_queue.push({length, found, step.to});
}

void RouteSearch::Run(Slot source, LineNo excluded, Slot target) {
  ++m_run;
  m_queue = {};
  constexpr Moment kStart{1, LineNo()};
  const Place start = m_graph.PlaceOf(source);
  const Place goal = target.IsNone() ? Place() : m_graph.PlaceOf(target);
  m_routes[start] = {0.0, kStart, start, m_run};
  m_queue.push({0.0, kStart, start});
  while (!m_queue.empty()) {
    const Candidate next = m_queue.top();
    m_queue.pop();
    const Route& route = m_routes[next.place];
    if (next.length != route.length || next.found != route.found) continue;  // improved since
    if (next.place == goal) return;
    if (m_graph.IsEnd(next.place) && next.place != start) continue;
    for (const RouteStep& step : m_graph.StepsFrom(next.place)) {
      if (step.line != excluded) Offer(next.place, step);
    }
  }
}

double RouteSearch::Rise(Slot node) const {
  std::vector<double> rises;  // of the lines from the end on
  for (Place place = m_graph.PlaceOf(node); m_routes[place].predecessor != place;
       place = m_routes[place].predecessor) {
    const RouteLine& line = m_graph.Line(m_routes[place].found.line);
    rises.push_back(line.to == m_graph.NodeAt(place) ? line.rise : -line.rise);
  }
  return std::accumulate(rises.rbegin(), rises.rend(), 0.0);
}

bool RouteSearch::HasTwoLines(Slot node) const {
  const Slot before = Predecessor(node);
  return before != node && Predecessor(before) != before;
}

}  // namespace brenu
