#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/closure_record.h"
#include "core/loops.h"
#include "level/level_net.h"

namespace brenu {

namespace {

// The levelled lines; empty when there are names without a point, or lengths that are negative or
// not finite: there are no shortest routes then.
std::optional<RouteGraph> MakeGraph(const NetworkLayout& net) {
  std::vector<RouteLine> lines;
  for (const Sight& s : net.Sights()) {
    const bool named = net.PointOf(s.station) >= 0 && net.PointOf(s.target) >= 0;
    if (!named || !(s.obs.distance >= 0.0) || !std::isfinite(s.obs.distance)) return std::nullopt;
    lines.push_back({s.station, s.target, s.obs.distance, s.obs.heightDiff});
  }
  return RouteGraph(net.SlotCount(), std::move(lines));
}

CloseError MakeRecord(std::string_view route, double misclosure, double length, double limit) {
  CloseError record{};
  SetRoute(record, route);
  record.heightMisclosure = misclosure * 1000.0;
  record.heightLimit = limit * std::sqrt(length / 1000.0);
  record.routeLength = length;
  return record;
}

// The names from `start` back to the source, as far as a record can hold them.
std::string RouteText(const NetworkLayout& net, const RouteSearch& search, std::int32_t start) {
  std::string text = net.Names().NameAt(start);
  std::int32_t slot = start;
  while (search.Predecessor(slot) != slot && text.size() < sizeof(CloseError::route)) {
    slot = search.Predecessor(slot);
    text += kRouteJoint + net.Names().NameAt(slot);
  }
  return text;
}

}  // namespace

bool LevelNet::CalcLineCloseError(std::vector<CloseError>& records) const {
  if (m_net->ControlCount() < 2) return false;
  const std::optional<RouteGraph> graph = MakeGraph(*m_net);
  if (!graph) return false;
  RouteSearch search(*graph);
  for (std::int32_t s = 0; s < m_net->ControlCount(); ++s) {
    const std::int32_t source = m_net->SlotOf(s);
    if (m_net->PointOf(source) != s) continue;  // a second bench mark of the name
    search.Run(source, RouteSearch::kNone, RouteSearch::kNone);
    for (std::int32_t t = s + 1; t < m_net->ControlCount(); ++t) {
      const std::int32_t end = m_net->SlotOf(t);
      if (m_net->PointOf(end) != t || !search.IsReached(end) || !search.HasTwoLines(end)) continue;
      const double known =
          m_heights[static_cast<std::size_t>(end)] - m_heights[static_cast<std::size_t>(source)];
      records.push_back(MakeRecord(RouteText(*m_net, search, end), known - search.Rise(end),
                                   search.Length(end), m_param.Lvl1Limit));
    }
  }
  return true;
}

bool LevelNet::CalcLoopCloseError(std::vector<CloseError>& records) const {
  const auto lineCount = static_cast<std::int64_t>(m_net->Sights().size());
  if (lineCount - m_net->PointCount() + 1 < 1) return false;
  const std::optional<RouteGraph> graph = MakeGraph(*m_net);
  if (!graph) return false;
  ForEachLoop(*graph, [&](std::int32_t k, const RouteSearch& search) {
    const RouteLine& line = graph->Line(k);
    if (!search.HasTwoLines(line.from)) return;
    const std::string route =
        RouteText(*m_net, search, line.from) + kRouteJoint + m_net->Names().NameAt(line.from);
    records.push_back(MakeRecord(route, -(search.Rise(line.from) + line.rise),
                                 search.Length(line.from) + line.length, m_param.Lvl1Limit));
  });
  return true;
}

}  // namespace brenu
