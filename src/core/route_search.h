#pragma once

#include <cstdint>
#include <functional>
#include <queue>
#include <tuple>
#include <vector>

#include "core/route_graph.h"

namespace brenu {

// Shortest routes from one node.
//
// The routes are those of the classical search in passes over all lines in ascending order, in
// which a route is replaced only by a strictly shorter one: of routes of equal length the one found
// first stays.  Here a heap settles the nodes in order of their length (Dijkstra, A note on two
// problems in connexion with graphs), and ties are decided by the moment, pass and line, at which
// the passes would have found the route.  Lengths must be finite and not negative.
class RouteSearch {
 public:
  // The graph must outlive the search.
  explicit RouteSearch(const RouteGraph& graph);

  // Finds all routes from `source`...
  void Run(Slot source) { Run(source, LineNo(), Slot()); }
  // ...or those that do not use the line `excluded`, until the route to `target` is known.
  void Run(Slot source, LineNo excluded, Slot target);

  bool IsReached(Slot node) const { return RouteTo(node).run == m_run; }
  // For nodes reached:
  double Length(Slot node) const { return RouteTo(node).length; }
  // Summed from the source on.
  double Rise(Slot node) const;
  // The node before this one; the source is its own.
  Slot Predecessor(Slot node) const { return m_graph.NodeAt(RouteTo(node).predecessor); }
  // Whether the route has two lines or more.
  bool HasTwoLines(Slot node) const;

 private:
  // When the passes would have found a route.
  struct Moment {
    std::int32_t pass;
    LineNo line;
    auto operator<=>(const Moment&) const = default;  // NOLINT(modernize-use-nullptr)
  };
  struct Route {
    double length = 0.0;   // from the source
    Moment found{};        // with the last line
    Place predecessor;     // the source is its own
    std::int32_t run = 0;  // the run that wrote this route
  };
  struct Candidate {
    double length;
    Moment found;
    Place place;
    bool operator>(const Candidate& other) const {
      return std::tie(other.length, other.found, other.place) < std::tie(length, found, place);
    }
  };

  const Route& RouteTo(Slot node) const { return m_routes[m_graph.PlaceOf(node)]; }
  void Offer(Place from, const RouteStep& step);

  const RouteGraph& m_graph;
  std::int32_t m_run = 0;
  Table<Place, Route> m_routes;  // by their end
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> m_queue;
};

}  // namespace brenu
