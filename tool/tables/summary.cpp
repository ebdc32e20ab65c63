#include "tables/summary.h"

#include <cmath>

#include "review/residuals.h"
#include "review/text.h"
#include "tables/text_table.h"

namespace brenu::tool {

namespace {

// Columns: label, value, unit, remark.
void AddCount(TextTable& table, const char* label, int count, const std::string& remark = "") {
  table.AddRow({label, std::to_string(count), "", remark});
}

void AddUnitWeight(TextTable& table, const NetworkFigures& figures, Network network, double mo) {
  const char* const label = "standard error of unit weight";
  if (figures.newPoints == 0) {
    table.AddRow({label, "-", "", "warning: there is no new point, so it cannot be computed"});
  } else if (!figures.HasPrecision()) {
    table.AddRow({label, "-", "",
                  "warning: the redundancy is " + std::to_string(figures.redundancy) +
                      ", so neither it nor the precision can be computed"});
  } else if (network == Network::kHeights) {
    table.AddRow({label, Fixed(figures.sigma0 * 1000.0, 2), "mm", "for 1 km of levelling"});
  } else {
    table.AddRow(
        {label, Fixed(figures.sigma0 * mo, 2), "\"",
         "m0 = " + Fixed(figures.sigma0, 3) + " times the a-priori MO = " + Fixed(mo, 2) + "\""});
  }
}

std::string WithArticle(const std::string& kind) {
  return (kind.starts_with('a') ? "an " : "a ") + kind;
}

// Metres; not a number when there is no such result.
double PointError(const AdjustmentContext& context, Network network, std::string_view name) {
  if (network == Network::kHeights) {
    const auto result = context.level.results.ResultOfPoint(name);
    return result ? result->sigma : std::nan("");
  }
  const auto result = context.plane.results.ResultOfPoint(name);
  return result ? result->mp : std::nan("");
}

void AddLargestError(TextTable& table, const AdjustmentContext& context, Network network) {
  double largest = 0.0;
  std::string name;
  for (const auto& [index, point] : context.store.Points()) {
    const double error = PointError(context, network, NameOf(point));
    if (IsControl(point, network) || !std::isfinite(error)) continue;
    if (!name.empty() && error <= largest) continue;
    largest = error;
    name = Printable(point.name);
  }
  if (name.empty()) return;
  table.AddRow({"largest point error", Fixed(largest * 1000.0, 2), "mm", name});
}

}  // namespace

std::string Summary(const AdjustmentContext& context, Network network,
                    const std::vector<Observation>& observations) {
  const NetworkFigures figures = FiguresOf(context, network);
  const auto kinds = KindsOf(context, network);
  TextTable table("lrll");
  AddCount(table, "control points", figures.controlPoints);
  AddCount(table, "new points", figures.newPoints);
  AddCount(table, "stations", CountStations(context, kinds, observations));
  std::vector<ResidualSummary> residuals;
  int takenOut = 0;
  for (const ObservationKind& kind : kinds) {
    const ResidualSummary& r =
        residuals.emplace_back(SummariseResiduals(context, kind, observations));
    takenOut += r.takenOut;
    AddCount(table, kind.plural, r.count,
             r.takenOut == 0 ? "" : std::to_string(r.takenOut) + " of them taken out");
  }
  // As the classic rules count it in the plane.
  const bool countsTwice =
      takenOut > 0 && network == Network::kPlane && !context.rules.AreTextbook();
  AddCount(table, "redundancy", figures.redundancy,
           countsTwice ? "each observation taken out is subtracted twice" : "");
  AddUnitWeight(table, figures, network, context.plane.results.Param().MO);
  if (figures.HasPrecision()) AddLargestError(table, context, network);
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const ResidualSummary& r = residuals[i];
    if (r.at == nullptr) continue;
    table.AddRow({"worst residual of " + WithArticle(kinds[i].singular), Fixed(r.worst, 2),
                  kinds[i].unit, Line(r.at->station, r.at->target)});
  }
  return table.Text();
}

}  // namespace brenu::tool
