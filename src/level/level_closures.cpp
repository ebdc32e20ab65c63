#include "level/level_closures.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/closure_record.h"
#include "core/loops.h"
#include "core/route_sources.h"

namespace brenu {

namespace {

// The levelled lines; empty when there are names without a point, or lengths that are negative or
// not finite: there are no shortest routes then.
std::optional<RouteGraph> MakeGraph(const NetworkLayout& net) {
  std::vector<RouteLine> lines;
  for (const Sight& s : net.Sights()) {
    const bool named = !net.PointOf(s.station).IsNone() && !net.PointOf(s.target).IsNone();
    if (!named || !(s.obs.distance >= 0.0) || !std::isfinite(s.obs.distance)) return std::nullopt;
    lines.push_back({s.station, s.target, s.obs.distance, s.obs.heightDiff});
  }
  return RouteGraph(net.Names().Count(), std::move(lines));
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
std::string RouteText(const NetworkLayout& net, const RouteSearch& search, Slot start) {
  std::string text = net.Names().NameAt(start);
  Slot slot = start;
  while (search.Predecessor(slot) != slot && text.size() < sizeof(CloseError::route)) {
    slot = search.Predecessor(slot);
    text += kRouteJoint + net.Names().NameAt(slot);
  }
  return text;
}

}  // namespace

bool CalcLineCloseError(const LevelNet& net, const Table<Slot, double>& heights,
                        std::vector<CloseError>& records) {
  const NetworkLayout& layout = net.layout;
  if (layout.ControlCount() < 2) return false;
  const std::optional<RouteGraph> graph = MakeGraph(layout);
  if (!graph) return false;
  const auto count = static_cast<std::size_t>(layout.ControlCount());
  ForEachSource(*graph, count, records, [&](std::size_t number, RouteSearch& search, auto& found) {
    const PointNo s(number);
    const Slot source = layout.SlotOf(s);
    if (layout.PointOf(source) != s) return;  // a second bench mark of the name
    search.Run(source);
    for (PointNo t(s.Number() + 1); t.Number() < layout.ControlCount(); ++t) {
      const Slot end = layout.SlotOf(t);
      if (layout.PointOf(end) != t || !search.IsReached(end) || !search.HasTwoLines(end)) continue;
      const double known = heights[end] - heights[source];
      found.push_back(MakeRecord(RouteText(layout, search, end), known - search.Rise(end),
                                 search.Length(end), net.param.Lvl1Limit));
    }
  });
  return true;
}

bool CalcLoopCloseError(const LevelNet& net, std::vector<CloseError>& records) {
  const NetworkLayout& layout = net.layout;
  const auto lineCount = static_cast<std::int64_t>(layout.Sights().Size());
  if (lineCount - layout.PointCount() + 1 < 1) return false;
  const std::optional<RouteGraph> graph = MakeGraph(layout);
  if (!graph) return false;
  ForEachLoop(*graph, [&](LineNo k, const RouteSearch& search) {
    const RouteLine& line = graph->Line(k);
    if (!search.HasTwoLines(line.from)) return;
    const std::string route =
        RouteText(layout, search, line.from) + kRouteJoint + layout.Names().NameAt(line.from);
    records.push_back(MakeRecord(route, -(search.Rise(line.from) + line.rise),
                                 search.Length(line.from) + line.length, net.param.Lvl1Limit));
  });
  return true;
}

}  // namespace brenu
