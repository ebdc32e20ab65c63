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

// A line as it is seen from one of its nodes.
struct RouteStep {
  std::int32_t line;
  std::int32_t to;  // a place
  double length;
};

// Nodes and the lines between them, for searching routes and loops.
//
// Inside, every node has a place: nodes that are joined are mostly close to each other in memory,
// so that a search over the whole graph finds what it needs in the cache.
class RouteGraph {
 public:
  // Routes may begin and end at a node for which `isEnd` is set, but not pass through it; without
  // flags they pass everywhere.
  RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines, std::vector<char> isEnd = {});

  std::int32_t NodeCount() const { return static_cast<std::int32_t>(m_placeOf.size()); }
  std::int32_t LineCount() const { return static_cast<std::int32_t>(m_lines.size()); }
  const RouteLine& Line(std::int32_t line) const { return m_lines[static_cast<std::size_t>(line)]; }
  // The lowest line that joins two nodes, in whichever direction; -1 when there is none.
  std::int32_t FirstLineBetween(std::int32_t a, std::int32_t b) const;

  std::int32_t PlaceOf(std::int32_t node) const {
    return m_placeOf[static_cast<std::size_t>(node)];
  }
  std::int32_t NodeAt(std::int32_t place) const {
    return m_nodeAt[static_cast<std::size_t>(place)];
  }
  // The lines at a place, ascending.
  std::span<const RouteStep> StepsFrom(std::int32_t place) const {
    const auto i = static_cast<std::size_t>(place);
    const auto first = static_cast<std::size_t>(m_firstAt[i]);
    return std::span(m_steps).subspan(first, static_cast<std::size_t>(m_firstAt[i + 1]) - first);
  }
  bool IsEnd(std::int32_t place) const {
    return !m_isEnd.empty() && m_isEnd[static_cast<std::size_t>(NodeAt(place))] != 0;
  }

 private:
  void GroupSteps();
  void PlaceAlongLines();

  std::vector<RouteLine> m_lines;
  std::vector<char> m_isEnd;            // by node, or empty
  std::vector<std::int32_t> m_placeOf;  // by node
  std::vector<std::int32_t> m_nodeAt;   // by place
  std::vector<std::int32_t> m_firstAt;  // by place, with one entry more
  std::vector<RouteStep> m_steps;       // grouped by place
};

}  // namespace brenu
