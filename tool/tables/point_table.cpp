#include "tables/point_table.h"

#include <utility>

#include "review/text.h"
#include "tables/text_table.h"

namespace brenu::tool {

namespace {

std::string Millimetres(double metres, int decimals) { return Fixed(metres * 1000.0, decimals); }

std::string MarkedName(const PointData& point, Network network) {
  return Printable(point.name) + (IsControl(point, network) ? " *" : "");
}

void AddHeight(TextTable& table, const AdjustmentContext& context, const PointData& point,
               bool hasPrecision) {
  const auto r = context.level.results.ResultOfPoint(NameOf(point));
  if (!r) return;
  table.AddRow({MarkedName(point, Network::kHeights), Fixed(r->height, 4),
                hasPrecision ? Millimetres(r->sigma, 2) : "-"});
}

void AddPlanePoint(TextTable& table, const AdjustmentContext& context, const PointData& point,
                   bool hasPrecision) {
  const auto r = context.plane.results.ResultOfPoint(NameOf(point));
  if (!r) return;
  std::vector<std::string> row = {MarkedName(point, Network::kPlane), Fixed(r->x, 4),
                                  Fixed(r->y, 4)};
  for (const double error : {r->mx, r->my, r->mp, r->e, r->f}) {
    row.push_back(hasPrecision ? Millimetres(error, 1) : "-");
  }
  row.push_back(hasPrecision ? DegreesMinutes(r->t) : "-");
  table.AddRow(std::move(row));
}

}  // namespace

std::string PointTable(const AdjustmentContext& context, Network network) {
  const bool heights = network == Network::kHeights;
  TextTable table(heights ? "lrr" : "lrrrrrrrr");
  if (heights) {
    table.AddRow({"Point", "H (m)", "mH (mm)"});
  } else {
    table.AddRow({"Point", "X (m)", "Y (m)", "mx (mm)", "my", "mp", "e", "f", "t (deg min)"});
  }
  const bool hasPrecision = FiguresOf(context, network).HasPrecision();
  const auto add = heights ? AddHeight : AddPlanePoint;
  for (const auto& [index, point] : context.store.Points()) {
    add(table, context, point, hasPrecision && !IsControl(point, network));
  }
  return table.Text();
}

std::string CoordinateTable(const AdjustmentContext& context) {
  TextTable table("lrr");
  table.AddRow({"Point", "X (m)", "Y (m)"});
  for (const auto& [index, point] : context.store.Points()) {
    const auto r = context.plane.results.ResultOfPoint(NameOf(point));
    if (!r) continue;
    table.AddRow({MarkedName(point, Network::kPlane), Fixed(r->x, 4), Fixed(r->y, 4)});
  }
  return table.Text();
}

}  // namespace brenu::tool
