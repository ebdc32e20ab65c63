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
  static constexpr std::int32_t kNone = -1;

  // The graph must outlive the search.
  explicit RouteSearch(const RouteGraph& graph);

  // Finds the routes from `source` that do not use the line `excluded`; stops as soon as the route
  // to `target` is known.  kNone excludes nothing, and finds all routes.
  void Run(std::int32_t source, std::int32_t excluded, std::int32_t target);

  bool IsReached(std::int32_t node) const { return At(m_graph.PlaceOf(node)).run == m_run; }
  // For nodes reached:
  double Length(std::int32_t node) const { return At(m_graph.PlaceOf(node)).length; }
  // Summed from the source on.
  double Rise(std::int32_t node) const;
  // The node before this one; the source is its own.
  std::int32_t Predecessor(std::int32_t node) const {
    return m_graph.NodeAt(At(m_graph.PlaceOf(node)).predecessor);
  }
  // Whether the route has two lines or more.
  bool HasTwoLines(std::int32_t node) const;

 private:
  // When the passes would have found a route.
  struct Moment {
    std::int32_t pass, line;
    bool operator==(const Moment&) const = default;
    bool operator<(const Moment& other) const {
      return std::tie(pass, line) < std::tie(other.pass, other.line);
    }
  };
  struct Route {
    double length = 0.0;            // from the source
    Moment found{};                 // with the last line
    std::int32_t predecessor = -1;  // a place; the source is its own
    std::int32_t run = 0;           // the run that wrote this route
  };
  struct Candidate {
    double length;
    Moment found;
    std::int32_t place;
    bool operator>(const Candidate& other) const {
      return std::tie(other.length, other.found, other.place) < std::tie(length, found, place);
    }
  };

  const Route& At(std::int32_t place) const { return m_routes[static_cast<std::size_t>(place)]; }
  void Offer(std::int32_t from, const RouteStep& step);

  const RouteGraph& m_graph;
  std::int32_t m_run = 0;
  std::vector<Route> m_routes;  // by place of the end
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> m_queue;
};

}  // namespace brenu
