#include "point_table.h"

#include <utility>

#include "format.h"
#include "text_table.h"

namespace brenu::tool {

namespace {

std::string Millimetres(double metres, int decimals) { return Fixed(metres * 1000.0, decimals); }

std::string MarkedName(const PointData& point, Network network) {
  return Printable(point.name) + (IsControl(point, network) ? " *" : "");
}

void AddHeight(TextTable& table, AdjustmentContext* context, std::int32_t index,
               const std::string& name, bool hasPrecision) {
  VerticalResult result{};
  if (!GetVerticalResult(context, index, &result)) return;
  table.AddRow({name, Fixed(result.height, 4), hasPrecision ? Millimetres(result.sigma, 2) : "-"});
}

void AddPlanePoint(TextTable& table, AdjustmentContext* context, std::int32_t index,
                   const std::string& name, bool hasPrecision) {
  PlaneResult r{};
  if (!GetPlaneResult(context, index, &r)) return;
  std::vector<std::string> row = {name, Fixed(r.x, 4), Fixed(r.y, 4)};
  for (const double error : {r.mx, r.my, r.mp, r.e, r.f}) {
    row.push_back(hasPrecision ? Millimetres(error, 1) : "-");
  }
  row.push_back(hasPrecision ? DegreesMinutes(r.t) : "-");
  table.AddRow(std::move(row));
}

}  // namespace

std::string PointTable(AdjustmentContext* context, Network network) {
  const bool heights = network == Network::kHeights;
  TextTable table(heights ? "lrr" : "lrrrrrrrr");
  if (heights) {
    table.AddRow({"Point", "H (m)", "mH (mm)"});
  } else {
    table.AddRow({"Point", "X (m)", "Y (m)", "mx (mm)", "my", "mp", "e", "f", "t (deg min)"});
  }
  const bool hasPrecision = FiguresOf(*context, network).HasPrecision();
  std::int32_t index = 0;
  for (const PointData& point : PointsOf(*context)) {
    const auto add = heights ? AddHeight : AddPlanePoint;
    add(table, context, index++, MarkedName(point, network),
        hasPrecision && !IsControl(point, network));
  }
  return table.Text();
}

std::string CoordinateTable(AdjustmentContext* context) {
  TextTable table("lrr");
  table.AddRow({"Point", "X (m)", "Y (m)"});
  std::int32_t index = 0;
  for (const PointData& point : PointsOf(*context)) {
    PlaneResult r{};
    if (!GetPlaneResult(context, index++, &r)) continue;
    table.AddRow({MarkedName(point, Network::kPlane), Fixed(r.x, 4), Fixed(r.y, 4)});
  }
  return table.Text();
}

}  // namespace brenu::tool
