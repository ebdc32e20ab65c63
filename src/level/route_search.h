#pragma once

#include <cstdint>
#include <optional>
#include <queue>
#include <vector>

#include "core/network_layout.h"

namespace brenu {

// Shortest levelling routes from one point, over observations in either direction.
//
// The routes are those of the classical search in passes over all observations in walk order, in
// which a route is replaced only by a strictly shorter one: of routes of equal length the one found
// first stays.  Here a heap settles the points in order of their length (Dijkstra, A note on two
// problems in connexion with graphs), and ties are decided by the moment, pass and observation, at
// which the passes would have found the route.
class RouteSearch {
 public:
  static constexpr std::int32_t kNone = -1;

  // The layout must outlive the search.
  explicit RouteSearch(const NetworkLayout& net);

  // False when there are names without a point, or lengths that are negative or not finite: there
  // are no shortest routes then.
  bool CanSearch() const { return m_canSearch; }

  // Finds the routes from the slot `source` that do not use the observation `excluded`; stops as
  // soon as the route to `target` is known.  kNone excludes nothing and finds all routes.
  void Run(std::int32_t source, std::int32_t excluded, std::int32_t target);

  // Of the last run, for slots whose route it found:
  bool IsReached(std::int32_t slot) const { return At(slot).run == m_run; }
  double Length(std::int32_t slot) const { return At(slot).length; }
  double HeightDiff(std::int32_t slot) const { return At(slot).heightDiff; }
  std::int32_t Predecessor(std::int32_t slot) const { return At(slot).predecessor; }

 private:
  // When the passes would have found a route.
  struct Moment {
    std::int32_t pass, observation;
    auto operator<=>(const Moment&) const = default;
  };
  struct Node {
    double length = 0.0;            // of the route from the source, metres
    double heightDiff = 0.0;        // summed along it, metres
    std::int32_t predecessor = -1;  // slot before this one; the source is its own
    Moment found{};
    std::int32_t run = 0;  // the run that wrote this node
  };
  struct Candidate {
    double length;
    Moment found;
    std::int32_t slot;
    auto operator<=>(const Candidate&) const = default;
  };

  const Node& At(std::int32_t slot) const { return m_nodes[static_cast<std::size_t>(slot)]; }
  void Offer(std::int32_t from, std::int32_t to, std::int32_t observation, double heightDiff);

  const NetworkLayout& m_net;
  bool m_canSearch = true;
  std::int32_t m_run = 0;
  std::vector<Node> m_nodes;  // by slot
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> m_queue;
};

}  // namespace brenu
