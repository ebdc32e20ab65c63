#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace brenu {

// A measured line between two nodes, which routes take in either direction.
struct RouteLine {
  std::int32_t from, to;
  double length;      // metres
  double rise = 0.0;  // summed along routes, with its sign reversed when taken backwards
};

// A line as it is seen from one of its nodes, with all that a search wants to know.
struct RouteStep {
  std::int32_t line;
  std::int32_t to;
  double length;
  double rise;  // in this direction
};

// Nodes and the lines between them, for searching routes and loops.
class RouteGraph {
 public:
  // Routes may begin and end at a node for which `isEnd` is set, but not pass through it; without
  // flags they pass everywhere.
  RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines, std::vector<char> isEnd = {});

  std::int32_t NodeCount() const { return static_cast<std::int32_t>(m_firstAt.size()) - 1; }
  std::int32_t LineCount() const { return static_cast<std::int32_t>(m_lines.size()); }
  const RouteLine& Line(std::int32_t line) const { return m_lines[static_cast<std::size_t>(line)]; }
  // The lines at a node, ascending.
  std::span<const RouteStep> StepsFrom(std::int32_t node) const {
    const auto i = static_cast<std::size_t>(node);
    const auto first = static_cast<std::size_t>(m_firstAt[i]);
    return std::span(m_steps).subspan(first, static_cast<std::size_t>(m_firstAt[i + 1]) - first);
  }
  // The lowest line that joins two nodes, in whichever direction; -1 when there is none.
  std::int32_t FirstLineBetween(std::int32_t a, std::int32_t b) const;
  bool IsEnd(std::int32_t node) const {
    return !m_isEnd.empty() && m_isEnd[static_cast<std::size_t>(node)] != 0;
  }

 private:
  std::vector<RouteLine> m_lines;
  std::vector<char> m_isEnd;            // by node, or empty
  std::vector<std::int32_t> m_firstAt;  // by node, with one entry more
  std::vector<RouteStep> m_steps;       // grouped by node
};

}  // namespace brenu
