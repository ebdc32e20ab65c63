#include "core/route_graph.h"

#include <numeric>
#include <utility>

namespace brenu {

RouteGraph::RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines,
                       std::vector<char> isEnd)
    : m_lines(std::move(lines)),
      m_isEnd(std::move(isEnd)),
      m_placeOf(static_cast<std::size_t>(nodeCount)) {
  std::iota(m_placeOf.begin(), m_placeOf.end(), 0);
  GroupSteps();
  PlaceAlongLines();
  GroupSteps();
}

void RouteGraph::GroupSteps() {
  m_firstAt.assign(m_placeOf.size() + 1, 0);
  for (const RouteLine& line : m_lines) {
    ++m_firstAt[static_cast<std::size_t>(PlaceOf(line.from)) + 1];
    ++m_firstAt[static_cast<std::size_t>(PlaceOf(line.to)) + 1];
  }
  std::partial_sum(m_firstAt.begin(), m_firstAt.end(), m_firstAt.begin());
  std::vector<std::int32_t> next(m_firstAt.begin(), m_firstAt.end() - 1);
  m_steps.resize(2 * m_lines.size());
  const auto add = [&](std::int32_t place, const RouteStep& step) {
    m_steps[static_cast<std::size_t>(next[static_cast<std::size_t>(place)]++)] = step;
  };
  for (std::int32_t k = 0; k < LineCount(); ++k) {
    const RouteLine& line = Line(k);
    add(PlaceOf(line.from), {k, PlaceOf(line.to), line.length});
    add(PlaceOf(line.to), {k, PlaceOf(line.from), line.length});
  }
}

// Places are taken breadth first.  While they are, the steps are still grouped by node.
void RouteGraph::PlaceAlongLines() {
  m_placeOf.assign(m_placeOf.size(), -1);
  m_nodeAt.reserve(m_placeOf.size());
  const auto take = [this](std::int32_t node) {
    std::int32_t& place = m_placeOf[static_cast<std::size_t>(node)];
    if (place >= 0) return;
    place = static_cast<std::int32_t>(m_nodeAt.size());
    m_nodeAt.push_back(node);
  };
  for (std::int32_t start = 0; start < NodeCount(); ++start) {
    const std::size_t first = m_nodeAt.size();
    take(start);
    for (std::size_t k = first; k < m_nodeAt.size(); ++k) {
      for (const RouteStep& step : StepsFrom(m_nodeAt[k])) take(step.to);
    }
  }
}

std::int32_t RouteGraph::FirstLineBetween(std::int32_t a, std::int32_t b) const {
  for (const RouteStep& step : StepsFrom(PlaceOf(a))) {
    if (step.to == PlaceOf(b)) return step.line;
  }
  return -1;
}

}  // namespace brenu
