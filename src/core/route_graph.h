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

// Nodes and the lines between them, for searching routes and loops.
class RouteGraph {
 public:
  // Routes may begin and end at a node for which `isEnd` is set, but not pass through it; without
  // flags they pass everywhere.
  RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines, std::vector<char> isEnd = {});

  std::int32_t NodeCount() const { return static_cast<std::int32_t>(m_firstAt.size()) - 1; }
  std::int32_t LineCount() const { return static_cast<std::int32_t>(m_lines.size()); }
  const RouteLine& Line(std::int32_t line) const { return m_lines[static_cast<std::size_t>(line)]; }
  // The numbers of the lines at a node, ascending.
  std::span<const std::int32_t> LinesAt(std::int32_t node) const;
  // The other end of a line.
  std::int32_t Across(std::int32_t line, std::int32_t node) const {
    return Line(line).from == node ? Line(line).to : Line(line).from;
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
  std::vector<std::int32_t> m_linesAt;  // line numbers grouped by node
};

}  // namespace brenu
