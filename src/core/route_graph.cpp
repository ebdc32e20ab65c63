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
  m_linesAt.resize(2 * m_lines.size());
  for (std::int32_t k = 0; k < LineCount(); ++k) {
    for (const std::int32_t node : {Line(k).from, Line(k).to}) {
      const std::int32_t place = next[static_cast<std::size_t>(node)]++;
      m_linesAt[static_cast<std::size_t>(place)] = k;
    }
  }
}

std::span<const std::int32_t> RouteGraph::LinesAt(std::int32_t node) const {
  const auto i = static_cast<std::size_t>(node);
  const auto first = static_cast<std::size_t>(m_firstAt[i]);
  return std::span(m_linesAt).subspan(first, static_cast<std::size_t>(m_firstAt[i + 1]) - first);
}

std::int32_t RouteGraph::FirstLineBetween(std::int32_t a, std::int32_t b) const {
  for (const std::int32_t line : LinesAt(a)) {
    if (Across(line, a) == b) return line;
  }
  return -1;
}

}  // namespace brenu
