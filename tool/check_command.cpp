#include "check_command.h"

#include <span>

#include "report/text_table.h"
#include "report/traverse_text.h"
#include "review/computation.h"
#include "review/misfits.h"
#include "review/network_view.h"
#include "review/text.h"
#include "tables/closure_table.h"

namespace brenu::tool {

namespace {

const char* TypeOf(std::int32_t type) {
  if (HasPlane(type) && HasLevelling(type)) return "plane and levelling network";
  if (HasPlane(type)) return "plane network";
  return HasLevelling(type) ? "levelling network" : "no network: there is no control point";
}

std::string Contents(const AdjustmentContext& context) {
  int control[2] = {};
  int counts[kObsKindCount] = {};
  for (const auto& [index, point] : context.store.Points()) {
    control[0] += IsPlaneControl(point) ? 1 : 0;
    control[1] += IsHeightControl(point) ? 1 : 0;
  }
  for (const Observation& o : ObservationsOf(context)) {
    const auto add = [&](ObsKind kind, bool is) { counts[static_cast<int>(kind)] += is ? 1 : 0; };
    add(ObsKind::kDirection, o.data.direction >= 0.0);
    add(ObsKind::kAzimuth, o.data.azimuth >= 0.0);
    add(ObsKind::kDistance,
        o.data.distance > 0.0 && (HasPlane(context.netType) || !IsLevelled(o.data)));
    add(ObsKind::kHeightDifference, IsLevelled(o.data));
  }
  TextTable table("lr");
  table.AddRow({"points", std::to_string(context.store.Points().size())});
  table.AddRow({"control points of the plane", std::to_string(control[0])});
  table.AddRow({"bench marks", std::to_string(control[1])});
  for (int k = 0; k < kObsKindCount; ++k) {
    table.AddRow({PluralOf(static_cast<ObsKind>(k)).english, std::to_string(counts[k])});
  }
  return table.Text();
}

std::string AngleOrLength(ObsKind kind, double value) {
  return IsAngle(kind) ? DegreesMinutesSeconds(value) : Fixed(value, 4);
}

std::string MisfitTable(const char* title, const char* column, std::span<const Misfit> misfits) {
  if (misfits.empty()) return "";
  const std::span<const Misfit> shown = Foremost(misfits);
  TextTable table("lllrrlr");
  table.AddRow({"Kind", "From", "To", "Observed", column, "", "by sigma"});
  for (const Misfit& m : shown) {
    const bool isAngle = IsAngle(m.kind);
    table.AddRow({WordsOf(m.kind).english, Printable(m.from), Printable(m.to),
                  AngleOrLength(m.kind, m.observed),
                  Fixed(m.difference * (isAngle ? 1.0 : 1000.0), 2), isAngle ? "\"" : "mm",
                  Fixed(m.ratio, 1)});
  }
  std::string text = std::string("\n") + title + ", the largest " + std::to_string(shown.size()) +
                     " of " + std::to_string(misfits.size()) + '\n';
  return text + table.Text();
}

Ending Check(AdjustmentContext& context, const CheckOptions& options, std::string& text) {
  context.rules = options.rules;
  if (IsUnoriented(context)) {
    Ending ending = Ending::Of(Compute(context), kComputationFailed);
    text = "Traverses without orientation\n" + Contents(context);
    if (ending.status == kDone) text += '\n' + TraverseSummary(context);
    return ending;
  }
  Outcome outcome = PlaceAndClose(context);
  const bool isComplete = outcome.ok && !Has(outcome.findings, Severity::kWarning);
  text = "Checks before an adjustment: " + std::string(TypeOf(context.netType)) + '\n' +
         Contents(context);
  text += MisfitTable("There and back", "Difference", TwoWayDifferences(context));
  text += MisfitTable("Observed minus computed from approximate values", "O - C",
                      ObservedMinusComputed(context));
  if (!context.closeErrors.empty()) {
    text += '\n' + MakeClosureTable(context, true).text;
  }
  return {isComplete ? kDone : kComputationFailed, std::move(outcome.findings)};
}

}  // namespace

ExitStatus RunCheck(const CheckOptions& options) {
  return RunOnFile(options, [&](AdjustmentContext& context, const Findings&, Progress& progress,
                                std::string& text) {
    progress.Enter("checking the network");
    return Check(context, options, text);
  });
}

}  // namespace brenu::tool
