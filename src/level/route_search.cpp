#include "level/route_search.h"

#include <algorithm>
#include <cmath>

namespace brenu {

RouteSearch::RouteSearch(const NetworkLayout& net)
    : m_net(net), m_nodes(static_cast<std::size_t>(net.SlotCount())) {
  m_canSearch = std::all_of(net.Sights().begin(), net.Sights().end(), [&net](const Sight& s) {
    return net.PointOf(s.station) >= 0 && net.PointOf(s.target) >= 0 && s.obs.distance >= 0.0 &&
           std::isfinite(s.obs.distance);
  });
}

void RouteSearch::Offer(std::int32_t from, std::int32_t to, std::int32_t observation,
                        double heightDiff) {
  const Node& start = At(from);
  const double line = m_net.Sights()[static_cast<std::size_t>(observation)].obs.distance;
  const double length = start.length + line;
  const bool laterInPass = observation > start.found.observation;
  const Moment found{laterInPass ? start.found.pass : start.found.pass + 1, observation};
  Node& node = m_nodes[static_cast<std::size_t>(to)];
  if (node.run == m_run &&
      !(length < node.length || (length == node.length && found < node.found))) {
    return;
  }
  node = {length, start.heightDiff + heightDiff, from, found, m_run};
  m_queue.push({length, found, to});
}

void RouteSearch::Run(std::int32_t source, std::int32_t excluded, std::int32_t target) {
  ++m_run;
  m_queue = {};
  constexpr Moment kStart{1, -1};
  m_nodes[static_cast<std::size_t>(source)] = {0.0, 0.0, source, kStart, m_run};
  m_queue.push({0.0, kStart, source});
  const auto sights = m_net.Sights();
  while (!m_queue.empty()) {
    const Candidate next = m_queue.top();
    m_queue.pop();
    const std::int32_t slot = next.slot;
    if (next.length != At(slot).length || next.found != At(slot).found) continue;  // outdated
    if (slot == target) return;
    const auto from = m_net.SightsFrom(slot);
    for (std::int32_t k = from.first; k < from.end; ++k) {
      const Sight& s = sights[static_cast<std::size_t>(k)];
      if (k != excluded) Offer(slot, s.target, k, s.obs.heightDiff);
    }
    for (const std::int32_t k : m_net.SightsTo(slot)) {
      const Sight& s = sights[static_cast<std::size_t>(k)];
      if (k != excluded) Offer(slot, s.station, k, -s.obs.heightDiff);
    }
  }
}

}  // namespace brenu
