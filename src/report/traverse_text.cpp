#include "report/traverse_text.h"

#include "report/text_table.h"
#include "review/text.h"

namespace brenu {

namespace {

std::string RouteOf(const Traverse& traverse) {
  std::string route;
  for (const TraversePoint& point : traverse.points) {
    if (!route.empty()) route += " - ";
    route += Printable(point.name);
  }
  return route;
}

std::string PointRows(const Traverse& traverse, Language language) {
  TextTable table("lrrrrrrrrrr");
  table.AddRow(HeadingsIn(language, {{"Point", "点名"},
                                     {"Angle", "转角"},
                                     {"v (\")", "v (″)"},
                                     {"Azimuth", "方位角"},
                                     {"Side (m)", "边长 (m)"},
                                     {"dx (m)", "Δx (m)"},
                                     {"dy (m)", "Δy (m)"},
                                     {"vx (mm)", "vx (mm)"},
                                     {"vy (mm)", "vy (mm)"},
                                     {"X (m)", "X (m)"},
                                     {"Y (m)", "Y (m)"}}));
  const TraversePoint* const last = &traverse.points.back();
  for (const TraversePoint& p : traverse.points) {
    std::vector<std::string> row = {Printable(p.name), DegreesMinutesSeconds(p.angle),
                                    p.angle < 0.0 ? "-" : Fixed(p.angleCorrection, 2),
                                    DegreesMinutesSeconds(p.azimuth)};
    for (const double length : {p.length, p.dx, p.dy}) {
      row.push_back(&p == last ? "-" : Fixed(length, 4));
    }
    for (const double correction : {p.dxCorrection, p.dyCorrection}) {
      row.push_back(&p == last ? "-" : Fixed(correction * 1000.0, 1));
    }
    for (const double coordinate : {p.x, p.y}) row.push_back(Fixed(coordinate, 4));
    table.AddRow(std::move(row));
  }
  return table.Text();
}

}  // namespace

std::string TraverseSummary(const AdjustmentContext& context, Language language) {
  TextTable table("rrrl");
  table.AddRow(HeadingsIn(language, {{"Length (m)", "长度 (m)"},
                                     {"Linear misclosure (m)", "长度闭合差 (m)"},
                                     {"Ratio", "相对闭合差"},
                                     {"Route", "路线"}}));
  for (const Traverse& t : context.plane.traverses.Traverses()) {
    table.AddRow(
        {Fixed(t.length, 3), Fixed(t.lengthMisclosure, 4), Ratio(t.relativePrecision), RouteOf(t)});
  }
  return table.Text();
}

std::string CoordinateTable(const AdjustmentContext& context, Language language) {
  TextTable table("lrr");
  table.AddRow(HeadingsIn(language, {{"Point", "点名"}, {"X (m)", "X (m)"}, {"Y (m)", "Y (m)"}}));
  for (const auto& [index, point] : context.store.Points()) {
    const auto r = context.plane.results.ResultOfPoint(NameOf(point));
    if (!r) continue;
    const char* const mark = IsPlaneControl(point) ? " *" : "";
    table.AddRow({Printable(NameOf(point)) + mark, Fixed(r->x, 4), Fixed(r->y, 4)});
  }
  return table.Text();
}

std::string TraverseTables(const AdjustmentContext& context, Language language) {
  std::string text;
  for (const Traverse& t : context.plane.traverses.Traverses()) {
    text += Words{"\nTraverse ", "\n导线 "}.In(language) +
            Line(t.points.front().name, t.points.back().name) + '\n';
    text += PointRows(t, language);
    text += Words{"  linear misclosure ", "  长度闭合差 "}.In(language) +
            Fixed(t.lengthMisclosure, 4) + Words{" m in ", " m，全长 "}.In(language) +
            Fixed(t.length, 3) + Words{" m, ", " m，"}.In(language) + Ratio(t.relativePrecision) +
            '\n';
  }
  return text;
}

}  // namespace brenu
