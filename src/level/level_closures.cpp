#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "level/bridges.h"
#include "level/level_net.h"
#include "level/route_search.h"

namespace brenu {

namespace {

constexpr std::int32_t kNone = RouteSearch::kNone;

// Fills a cleared record for a route found by the search, which runs from its source to `end`.
CloseError MakeRecord(std::string_view route, double misclosure, double length, double limit) {
  CloseError record{};
  const std::size_t size = std::min(route.size(), sizeof(record.route) - 1);
  std::copy_n(route.data(), size, record.route);
  record.heightMisclosure = misclosure * 1000.0;
  record.heightLimit = limit * std::sqrt(length / 1000.0);
  record.routeLength = length;
  return record;
}

// The names from `start` back to the source, as far as a record can hold them.
std::string RouteText(const NetworkLayout& net, const RouteSearch& search, std::int32_t start) {
  std::string text;
  std::int32_t slot = start;
  while (search.Predecessor(slot) != slot && text.size() < sizeof(CloseError::route)) {
    text += net.Names().NameAt(slot);
    text += " - ";
    slot = search.Predecessor(slot);
  }
  return text += net.Names().NameAt(slot);
}

// Whether the route found to `slot` has two observations or more.
bool HasTwoObservations(const RouteSearch& search, std::int32_t slot) {
  const std::int32_t before = search.Predecessor(slot);
  return before != slot && search.Predecessor(before) != before;
}

}  // namespace

bool LevelNet::CalcLineCloseError(std::vector<CloseError>& records) const {
  if (m_net->ControlCount() < 2) return false;
  RouteSearch search(*m_net);
  if (!search.CanSearch()) return false;
  for (std::int32_t s = 0; s < m_net->ControlCount(); ++s) {
    const std::int32_t source = m_net->SlotOf(s);
    search.Run(source, kNone, kNone);
    for (std::int32_t t = s + 1; t < m_net->ControlCount(); ++t) {
      const std::int32_t end = m_net->SlotOf(t);
      if (!search.IsReached(end) || !HasTwoObservations(search, end)) continue;
      const double known =
          m_heights[static_cast<std::size_t>(end)] - m_heights[static_cast<std::size_t>(source)];
      records.push_back(MakeRecord(RouteText(*m_net, search, end), known - search.HeightDiff(end),
                                   search.Length(end), m_param.Lvl1Limit));
    }
  }
  return true;
}

bool LevelNet::CalcLoopCloseError(std::vector<CloseError>& records) const {
  const auto sights = m_net->Sights();
  if (static_cast<std::int64_t>(sights.size()) - m_net->PointCount() + 1 < 1) return false;
  RouteSearch search(*m_net);
  if (!search.CanSearch()) return false;
  // A bridge lies on no loop: it is passed over like an observation on a loop found before.
  std::vector<char> isMarked = FindBridges(*m_net);
  const auto mark = [&isMarked](std::int32_t k) { isMarked[static_cast<std::size_t>(k)] = 1; };
  for (std::size_t k = 0; k < sights.size(); ++k) {
    if (isMarked[k] != 0) continue;
    const Sight& s = sights[k];
    search.Run(s.target, static_cast<std::int32_t>(k), s.station);
    if (!search.IsReached(s.station)) continue;
    mark(static_cast<std::int32_t>(k));
    for (std::int32_t slot = s.station; slot != s.target; slot = search.Predecessor(slot)) {
      // Of two observations between the same points the first is marked, whichever the route took.
      const std::int32_t before = search.Predecessor(slot);
      const std::int32_t there = m_net->FindSight(slot, before);
      const std::int32_t back = m_net->FindSight(before, slot);
      mark(there < 0 || (back >= 0 && back < there) ? back : there);
    }
    if (!HasTwoObservations(search, s.station)) continue;
    const std::string route =
        RouteText(*m_net, search, s.station) + " - " + m_net->Names().NameAt(s.station);
    records.push_back(MakeRecord(route, -(search.HeightDiff(s.station) + s.obs.heightDiff),
                                 search.Length(s.station) + s.obs.distance, m_param.Lvl1Limit));
  }
  return true;
}

}  // namespace brenu
