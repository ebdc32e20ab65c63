#include "level/bridges.h"

#include <algorithm>
#include <cstdint>

namespace brenu {

namespace {

// A depth-first search over the points; a line is a bridge when nothing below it leads back above.
class BridgeSearch {
 public:
  explicit BridgeSearch(const NetworkLayout& net)
      : m_net(net),
        m_order(static_cast<std::size_t>(net.SlotCount()), 0),
        m_lowest(m_order.size(), 0),
        m_isBridge(net.Sights().size(), 0) {}

  std::vector<char> Run() {
    for (std::int32_t slot = 0; slot < m_net.SlotCount(); ++slot) {
      if (m_order[static_cast<std::size_t>(slot)] == 0) Explore(slot);
    }
    return std::move(m_isBridge);
  }

 private:
  struct Visit {
    std::int32_t slot;  // the point
    std::int32_t via;   // the line by which the search came here, -1 at the start
    std::size_t next;   // the next of its lines to look at
  };

  // The lines of a point: those observed at it, then those observed to it.
  std::int32_t LineOf(std::int32_t slot, std::size_t place) const {
    const auto from = m_net.SightsFrom(slot);
    const auto own = static_cast<std::size_t>(from.end - from.first);
    if (place < own) return from.first + static_cast<std::int32_t>(place);
    const auto to = m_net.SightsTo(slot);
    return place - own < to.size() ? to[place - own] : -1;
  }

  void Enter(std::int32_t slot, std::int32_t via) {
    m_lowest[static_cast<std::size_t>(slot)] = m_order[static_cast<std::size_t>(slot)] = ++m_count;
    m_path.push_back({slot, via, 0});
  }

  void Explore(std::int32_t start) {
    Enter(start, -1);
    while (!m_path.empty()) {
      Visit& visit = m_path.back();
      const std::int32_t slot = visit.slot;
      const std::int32_t line = LineOf(slot, visit.next++);
      if (line < 0) {
        Leave();
        continue;
      }
      if (line == visit.via) continue;
      const Sight& s = m_net.Sights()[static_cast<std::size_t>(line)];
      const std::int32_t other = s.station == slot ? s.target : s.station;
      if (m_order[static_cast<std::size_t>(other)] == 0) {
        Enter(other, line);
      } else {
        Lower(slot, m_order[static_cast<std::size_t>(other)]);
      }
    }
  }

  void Leave() {
    const Visit done = m_path.back();
    m_path.pop_back();
    if (m_path.empty()) return;
    const std::int32_t above = m_path.back().slot;
    const std::int32_t lowest = m_lowest[static_cast<std::size_t>(done.slot)];
    Lower(above, lowest);
    if (lowest > m_order[static_cast<std::size_t>(above)]) {
      m_isBridge[static_cast<std::size_t>(done.via)] = 1;
    }
  }

  void Lower(std::int32_t slot, std::int32_t order) {
    std::int32_t& lowest = m_lowest[static_cast<std::size_t>(slot)];
    lowest = std::min(lowest, order);
  }

  const NetworkLayout& m_net;
  std::int32_t m_count = 0;
  std::vector<std::int32_t> m_order;   // by slot: when the search reached it, 0 for not yet
  std::vector<std::int32_t> m_lowest;  // by slot: the earliest point that it or its part leads to
  std::vector<Visit> m_path;
  std::vector<char> m_isBridge;
};

}  // namespace

std::vector<char> FindBridges(const NetworkLayout& net) { return BridgeSearch(net).Run(); }

}  // namespace brenu
