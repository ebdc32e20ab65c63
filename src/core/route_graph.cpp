#include "core/route_graph.h"

#include <numeric>
#include <utility>

namespace brenu {

RouteGraph::RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines,
                       std::vector<char> isEnd)
    : m_lines(std::move(lines)), m_isEnd(std::move(isEnd)) {
  const auto count = static_cast<std::size_t>(nodeCount);
  m_nodeAt.Reserve(count);
  for (const Slot node : IndexRange<Slot>(count)) {
    m_nodeAt.Add(node);
    m_placeOf.Add(Place(node.Number()));
  }
  GroupSteps();
  PlaceAlongLines();
  GroupSteps();
}

void RouteGraph::GroupSteps() {
  std::vector<std::int32_t> next(NodeCount() + 1, 0);
  for (const RouteLine& line : m_lines) {
    ++next[PlaceOf(line.from).Position() + 1];
    ++next[PlaceOf(line.to).Position() + 1];
  }
  std::partial_sum(next.begin(), next.end(), next.begin());
  m_firstAt = Table<Place, std::int32_t>(next);
  m_steps.resize(2 * m_lines.Size());
  const auto add = [&](Place place, const RouteStep& step) {
    m_steps[static_cast<std::size_t>(next[place.Position()]++)] = step;
  };
  for (const LineNo k : Lines()) {
    const RouteLine& line = Line(k);
    add(PlaceOf(line.from), {k, PlaceOf(line.to), line.length});
    add(PlaceOf(line.to), {k, PlaceOf(line.from), line.length});
  }
}

// Places are taken breadth first.  While they are, the steps are still grouped in node order.
void RouteGraph::PlaceAlongLines() {
  std::vector<Slot> order;  // by new place
  order.reserve(NodeCount());
  std::vector<char> isTaken(NodeCount(), 0);  // by old place
  const auto take = [&](Place old) {
    if (std::exchange(isTaken[old.Position()], 1) == 0) order.push_back(m_nodeAt[old]);
  };
  for (const Place start : Places()) {
    const std::size_t first = order.size();
    take(start);
    for (std::size_t k = first; k < order.size(); ++k) {
      for (const RouteStep& step : StepsFrom(m_placeOf[order[k]])) take(step.to);
    }
  }
  m_nodeAt = Table<Place, Slot>(std::move(order));
  for (const Place place : Places()) m_placeOf[m_nodeAt[place]] = place;
}

std::span<const RouteStep> RouteGraph::StepsFrom(Place place) const {
  const auto first = static_cast<std::size_t>(m_firstAt[place]);
  ++place;
  const auto end = static_cast<std::size_t>(m_firstAt[place]);
  return std::span(m_steps).subspan(first, end - first);
}

LineNo RouteGraph::FirstLineBetween(Slot a, Slot b) const {
  auto steps = StepsFrom(PlaceOf(a));
  Place other = PlaceOf(b);
  if (const auto back = StepsFrom(other); back.size() < steps.size()) {  // fewer to look at
    steps = back;
    other = PlaceOf(a);
  }
  for (const RouteStep& step : steps) {
    if (step.to == other) return step.line;
  }
  return {};
}

}  // namespace brenu
