#include "core/route_graph.h"

#include <utility>

namespace brenu {

RouteGraph::RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines,
                       std::vector<char> isEnd)
    : m_lines(std::move(lines)), m_isEnd(std::move(isEnd)) {
  m_firstAt.assign(static_cast<std::size_t>(nodeCount) + 1, 0);
  for (const RouteLine& line : m_lines) {
    ++m_firstAt[static_cast<std::size_t>(line.from) + 1];
    ++m_firstAt[static_cast<std::size_t>(line.to) + 1];
  }
  for (std::size_t i = 1; i < m_firstAt.size(); ++i) m_firstAt[i] += m_firstAt[i - 1];
  std::vector<std::int32_t> next(m_firstAt.begin(), m_firstAt.end() - 1);
  m_steps.resize(2 * m_lines.size());
  const auto add = [&](std::int32_t node, const RouteStep& step) {
    m_steps[static_cast<std::size_t>(next[static_cast<std::size_t>(node)]++)] = step;
  };
  for (std::int32_t k = 0; k < LineCount(); ++k) {
    const RouteLine& line = Line(k);
    add(line.from, {k, line.to, line.length, line.rise});
    add(line.to, {k, line.from, line.length, -line.rise});
  }
}

std::int32_t RouteGraph::FirstLineBetween(std::int32_t a, std::int32_t b) const {
  for (const RouteStep& step : StepsFrom(a)) {
    if (step.to == b) return step.line;
  }
  return -1;
}

}  // namespace brenu
