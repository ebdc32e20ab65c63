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

std::string PointRows(const Traverse& traverse) {
  TextTable table("lrrrrrrrrrr");
  table.AddRow({"Point", "Angle", "v (\")", "Azimuth", "Side (m)", "dx (m)", "dy (m)", "vx (mm)",
                "vy (mm)", "X (m)", "Y (m)"});
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

std::string TraverseSummary(const AdjustmentContext& context) {
  TextTable table("rrrl");
  table.AddRow({"Length (m)", "Linear misclosure (m)", "Ratio", "Route"});
  for (const Traverse& t : context.plane.traverses.Traverses()) {
    table.AddRow(
        {Fixed(t.length, 3), Fixed(t.lengthMisclosure, 4), Ratio(t.relativePrecision), RouteOf(t)});
  }
  return table.Text();
}

std::string CoordinateTable(const AdjustmentContext& context) {
  TextTable table("lrr");
  table.AddRow({"Point", "X (m)", "Y (m)"});
  for (const auto& [index, point] : context.store.Points()) {
    const auto r = context.plane.results.ResultOfPoint(NameOf(point));
    if (!r) continue;
    const char* const mark = IsPlaneControl(point) ? " *" : "";
    table.AddRow({Printable(NameOf(point)) + mark, Fixed(r->x, 4), Fixed(r->y, 4)});
  }
  return table.Text();
}

std::string TraverseTables(const AdjustmentContext& context) {
  std::string text;
  for (const Traverse& t : context.plane.traverses.Traverses()) {
    text += "\nTraverse " + Line(t.points.front().name, t.points.back().name) + '\n';
    text += PointRows(t);
    text += "  linear misclosure " + Fixed(t.lengthMisclosure, 4) + " m in " + Fixed(t.length, 3) +
            " m, " + Ratio(t.relativePrecision) + '\n';
  }
  return text;
}

}  // namespace brenu
