#include "adjust_command.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

#include "report/json.h"
#include "report/make_report.h"
#include "report/summary.h"
#include "report/text_report.h"
#include "report/traverse_text.h"
#include "report/verdict_text.h"
#include "report_files.h"
#include "review/computation.h"
#include "review/data_check.h"
#include "review/encoding.h"
#include "review/network_view.h"
#include "review/rules_check.h"

namespace brenu::tool {

namespace {

std::string NetworkText(const Report& report, const AdjustOptions& options) {
  const Language language = options.language;
  const auto heading = [&](const Words& words) {
    return '\n' + std::string(words.In(language)) + '\n';
  };
  std::string text = RulesText(report.rules, language) + '\n';
  if (report.heights) {
    text += heading({"Levelling network", "高程网"}) + HeightsSummary(report, language);
  }
  if (report.plane) text += heading({"Plane network", "平面网"}) + PlaneSummary(report, language);
  if (options.alpha) text += '\n' + TakenOutTable(report, language);
  if (options.summaryOnly) return text;
  if (report.heights) {
    text += heading({"Adjusted heights (* control point)", "平差高程（* 已知点）"}) +
            HeightsTable(*report.heights, language);
  }
  if (report.plane) {
    text += heading({"Adjusted coordinates (* control point)", "平差坐标（* 已知点）"}) +
            PlaneTable(*report.plane, language);
  }
  return text;
}

std::string TraverseText(const AdjustmentContext& context, const AdjustOptions& options) {
  const Language language = options.language;
  std::string text = std::string(kTraversesWithoutOrientation.In(language)) + '\n' +
                     TraverseSummary(context, language);
  if (options.summaryOnly) return text;
  text += Words{"\nCoordinates (* control point)\n", "\n坐标（* 已知点）\n"}.In(language) +
          CoordinateTable(context, language);
  return text + TraverseTables(context, language);
}

// Whether the format of the file allows the options; says so otherwise.
bool AreFit(const AdjustmentContext& context, const AdjustOptions& options) {
  if (options.alpha && !IsOrdinary(context)) {
    SayWords(options, {"data snooping needs a network of format 0; leave out --snoop",
                       "粗差探测须为格式 0 的网；请去掉 --snoop"});
    return false;
  }
  if (IsUnoriented(context) && !options.resultFile.empty()) {
    SayWords(options,
             {"traverses without orientation (format 1) have neither residuals nor precision "
              "to report; leave out --result",
              "无定向导线（格式 1）没有改正数和精度可报告；请去掉 --result"});
    return false;
  }
  return true;
}

// Whether closure errors are computed for the verdict where no report of them is asked for: their
// routes may take longer than the adjustment of a large network.
bool AreQuick(const AdjustmentContext& context) {
  constexpr std::size_t kMostPoints = 10000;
  return IsOrdinary(context) && context.store.Points().size() <= kMostPoints;
}

// Names the points of the relative ellipses asked for as the file does, which may be in GBK.
Findings TakePairs(AdjustmentContext& context, const AdjustOptions& options) {
  std::map<std::string, std::string_view> names;
  if (options.pairs.empty()) return {};
  for (const auto& [index, point] : context.store.Points()) {
    names.emplace(ToUtf8(NameOf(point)), NameOf(point));
  }
  std::set<std::pair<std::string, std::string>> asked;
  for (const auto& [from, to] : options.pairs) {
    for (const std::string& name : {from, to}) {
      if (!names.contains(name)) return {Error(BRENU_POINT_UNKNOWN, {name})};
    }
    if (from == to) return {Error(BRENU_TARGET_IS_STATION, {from})};
    if (!asked.insert(std::minmax(from, to)).second) continue;
    context.askedPairs.emplace_back(names[from], names[to]);
  }
  return {};
}

// Closure errors go first: the adjustment computes its approximate values itself.
Ending MakeClosures(AdjustmentContext& context, const AdjustOptions& options) {
  const bool isReported = !options.closureFile.empty();
  if (!isReported && !AreQuick(context)) return {};
  Outcome outcome = ComputeClosures(context);
  if (!isReported) return {};  // the adjustment will say what is the matter
  if (!outcome.ok) return Ending::Of(std::move(outcome), kComputationFailed);
  if (context.closeErrors.empty()) {
    Say(options, outcome.findings);
    SayWords(options, {"no closure report is written", "未写闭合差报告"});
    return {};
  }
  return WriteClosureFile(context, options.closureFile);
}

// Whatever the rules make of it that is worth a note.
Findings CompareWithRules(const AdjustmentContext& context) {
  if (!context.rules.AreTextbook() || IsUnoriented(context)) return {};
  Findings found = CompareRules(context);
  for (Finding& finding : CheckLevelSigma(context)) found.push_back(std::move(finding));
  return found;
}

void Append(Findings& all, Findings more) {
  for (Finding& finding : more) all.push_back(std::move(finding));
}

std::string ResultText(const AdjustmentContext& context, const Report& report,
                       const AdjustOptions& options) {
  if (IsUnoriented(context)) return TraverseText(context, options);
  return VerdictText(report.verdict, options.language) + '\n' + NetworkText(report, options);
}

// The outputs of a computation, failed or not.
Ending Present(const AdjustmentContext& context, const Report& report, const AdjustOptions& options,
               bool isComputed, std::string& text) {
  if (options.outputs.json == "-") {
    const auto json = [&](const TextSink& sink) { WriteJson(report, sink); };
    if (!Print(options, json)) return {kFileOrUsage, {}};
  } else if (isComputed) {
    text = ResultText(context, report, options);
  }
  Ending written = WriteOutputs(report, options.outputs, options.language);
  if (written.status != kDone || !isComputed || options.resultFile.empty()) return written;
  return WriteResultFile(context, options.resultFile);
}

Ending Adjust(AdjustmentContext& context, const Findings& read, const AdjustOptions& options,
              Progress& progress, std::string& text) {
  context.rules = options.rules;
  if (!AreFit(context, options)) return {kFileOrUsage, {}};
  if (Findings found = CheckWeights(context); !found.empty()) {
    return {kFileOrUsage, std::move(found)};
  }
  if (Findings found = TakePairs(context, options); !found.empty()) {
    return {kFileOrUsage, std::move(found)};
  }
  progress.Enter({"computing closure errors", "计算闭合差"});
  Ending ending = MakeClosures(context, options);
  if (ending.status != kDone) return ending;
  progress.Enter(options.alpha ? Words{"adjusting with data snooping", "平差并探测粗差"}
                               : Words{"adjusting", "平差"});
  Outcome computed =
      Compute(context, options.alpha, [&](int round) { progress.EnterRound(round); });
  ending = {kDone, std::move(computed.findings)};
  if (computed.ok) {
    progress.Enter({"comparing with the classic rules", "与经典规则比较"});
    Append(ending.findings, CompareWithRules(context));
  }
  if (computed.ok && !(options.resultFile.empty() && options.closureFile.empty())) {
    Append(ending.findings, CheckNamesForGbk(context));
  }
  progress.Enter({"making the tables", "编制表格"});
  Findings all = read;
  Append(all, ending.findings);
  const Report report = MakeReport(context, options.file, std::move(all));
  const bool mayGoOn = computed.ok && (report.verdict.passed || options.noVerdict);
  if (!mayGoOn) ending.status = kComputationFailed;
  if (options.outputs.json == "-") {
    progress.Stop();  // which would write between its lines
  } else {
    progress.Enter({"writing the reports", "写报告"});
  }
  Ending written = Present(context, report, options, computed.ok, text);
  if (written.status == kDone) return ending;
  Say(options, ending.findings);
  return written;
}

}  // namespace

ExitStatus RunAdjust(const AdjustOptions& options) {
  std::vector<std::string> files = options.outputs.Files();
  files.insert(files.begin(), {options.resultFile, options.closureFile});
  if (!AreDistinct(options, files)) return kFileOrUsage;
  return RunOnFile(
      options, [&](AdjustmentContext& context, const Findings& read, Progress& progress,
                   std::string& text) { return Adjust(context, read, options, progress, text); });
}

}  // namespace brenu::tool
