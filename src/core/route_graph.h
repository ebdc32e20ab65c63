#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/name_table.h"

namespace brenu {

using LineNo = Index<struct LineKind>;
// Where a node stands inside a graph.
using Place = Index<struct PlaceKind>;

// A measured line between two nodes, which routes take in either direction.
struct RouteLine {
  Slot from, to;
  double length;      // metres
  double rise = 0.0;  // summed along routes, with its sign reversed when taken backwards
};

// A line as it is seen from one of its nodes.
struct RouteStep {
  LineNo line;
  Place to;
  double length;
};

// Nodes (names by slot) and the lines between them, for searching routes and loops.
//
// Inside, every node has a place: nodes that are joined are mostly close to each other in memory,
// so that a search over the whole graph finds what it needs in the cache.
class RouteGraph {
 public:
  // Routes may begin and end at a node for which `isEnd` is set, but not pass through it; without
  // flags they pass everywhere.
  RouteGraph(std::int32_t nodeCount, std::vector<RouteLine> lines, std::vector<char> isEnd = {});

  std::size_t NodeCount() const { return m_placeOf.Size(); }
  IndexRange<Place> Places() const { return m_nodeAt.Indices(); }
  IndexRange<LineNo> Lines() const { return m_lines.Indices(); }
  const RouteLine& Line(LineNo line) const { return m_lines[line]; }
  // The lowest line that joins two nodes, in whichever direction; none when they are not joined.
  LineNo FirstLineBetween(Slot a, Slot b) const;

  Place PlaceOf(Slot node) const { return m_placeOf[node]; }
  Slot NodeAt(Place place) const { return m_nodeAt[place]; }
  // The lines at a place, ascending.
  std::span<const RouteStep> StepsFrom(Place place) const;
  bool IsEnd(Place place) const { return !m_isEnd.IsEmpty() && m_isEnd[NodeAt(place)] != 0; }

 private:
  void GroupSteps();
  void PlaceAlongLines();

  Table<LineNo, RouteLine> m_lines;
  Table<Slot, char> m_isEnd;  // or empty
  Table<Slot, Place> m_placeOf;
  Table<Place, Slot> m_nodeAt;
  Table<Place, std::int32_t> m_firstAt;  // in m_steps, with one entry more
  std::vector<RouteStep> m_steps;        // grouped by place
};

}  // namespace brenu
