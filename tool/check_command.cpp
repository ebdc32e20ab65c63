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

Words TypeOf(std::int32_t type) {
  if (HasPlane(type) && HasLevelling(type)) {
    return {"plane and levelling network", "平面网和高程网"};
  }
  if (HasPlane(type)) return {"plane network", "平面网"};
  if (HasLevelling(type)) return {"levelling network", "高程网"};
  return {"no network: there is no control point", "不成网：没有已知点"};
}

std::string Contents(const AdjustmentContext& context, Language language) {
  std::size_t control[2] = {};
  std::size_t counts[kObsKindCount] = {};
  for (const auto& [index, point] : context.store.Points()) {
    control[0] += IsPlaneControl(point) ? 1 : 0;
    control[1] += IsHeightControl(point) ? 1 : 0;
  }
  for (const Observation& o : ObservationsOf(context)) {
    const auto countIf = [&](ObsKind kind, bool is) {
      counts[static_cast<int>(kind)] += is ? 1 : 0;
    };
    countIf(ObsKind::kDirection, o.data.direction >= 0.0);
    countIf(ObsKind::kAzimuth, o.data.azimuth >= 0.0);
    countIf(ObsKind::kDistance,
            o.data.distance > 0.0 && (HasPlane(context.netType) || !IsLevelled(o.data)));
    countIf(ObsKind::kHeightDifference, IsLevelled(o.data));
  }
  TextTable table("lr");
  const auto add = [&](const Words& what, std::size_t count) {
    table.AddRow({what.In(language), std::to_string(count)});
  };
  add({"points", "点"}, context.store.Points().size());
  add({"control points of the plane", "平面已知点"}, control[0]);
  add({"bench marks", "水准点"}, control[1]);
  for (int k = 0; k < kObsKindCount; ++k) add(PluralOf(static_cast<ObsKind>(k)), counts[k]);
  return table.Text();
}

std::string AngleOrLength(ObsKind kind, double value) {
  return IsAngle(kind) ? DegreesMinutesSeconds(value) : Fixed(value, 4);
}

std::string MisfitTable(const Words& title, const Words& column, std::span<const Misfit> misfits,
                        Language language) {
  if (misfits.empty()) return "";
  const std::span<const Misfit> shown = Foremost(misfits);
  TextTable table("lllrrlr");
  table.AddRow(HeadingsIn(language, {{"Kind", "类型"},
                                     {"From", "测站"},
                                     {"To", "照准点"},
                                     {"Observed", "观测值"},
                                     column,
                                     {"", ""},
                                     {"by sigma", "与 σ 之比"}}));
  for (const Misfit& m : shown) {
    const bool isAngle = IsAngle(m.kind);
    table.AddRow({WordsOf(m.kind).In(language), Printable(m.from), Printable(m.to),
                  AngleOrLength(m.kind, m.observed),
                  Fixed(m.difference * (isAngle ? 1.0 : 1000.0), 2), isAngle ? "\"" : "mm",
                  Fixed(m.ratio, 1)});
  }
  return std::string("\n") + title.In(language) +
         Words{", the largest ", "，最大的 "}.In(language) + std::to_string(shown.size()) +
         Words{" of ", " 个，共 "}.In(language) + std::to_string(misfits.size()) +
         Words{"\n", " 个\n"}.In(language) + table.Text();
}

Ending Check(AdjustmentContext& context, const CheckOptions& options, std::string& text) {
  const Language language = options.language;
  context.rules = options.rules;
  if (IsUnoriented(context)) {
    Ending ending = Ending::Of(Compute(context), kComputationFailed);
    text =
        std::string(kTraversesWithoutOrientation.In(language)) + '\n' + Contents(context, language);
    if (ending.status == kDone) text += '\n' + TraverseSummary(context, language);
    return ending;
  }
  Outcome outcome = PlaceAndClose(context);
  const bool isComplete = outcome.ok && !Has(outcome.findings, Severity::kWarning);
  text = Words{"Checks before an adjustment: ", "平差前检查："}.In(language) +
         std::string(TypeOf(context.netType).In(language)) + '\n' + Contents(context, language);
  text += MisfitTable({"There and back", "往返测较差"}, {"Difference", "较差"},
                      TwoWayDifferences(context), language);
  text +=
      MisfitTable({"Observed minus computed from approximate values", "观测值与近似值计算值之差"},
                  {"O - C", "观测 − 计算"}, ObservedMinusComputed(context), language);
  if (!context.closeErrors.empty()) {
    text += '\n' + MakeClosureTable(context, true, language).text;
  }
  return {isComplete ? kDone : kComputationFailed, std::move(outcome.findings)};
}

}  // namespace

ExitStatus RunCheck(const CheckOptions& options) {
  return RunOnFile(options, [&](AdjustmentContext& context, const Findings&, Progress& progress,
                                std::string& text) {
    progress.Enter({"checking the network", "检查网"});
    return Check(context, options, text);
  });
}

}  // namespace brenu::tool
