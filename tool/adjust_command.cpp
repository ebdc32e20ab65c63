#include "adjust_command.h"

#include <algorithm>

#include "report_files.h"
#include "review/computation.h"
#include "review/data_check.h"
#include "review/network_view.h"
#include "review/rules_check.h"
#include "tables/point_table.h"
#include "tables/summary.h"
#include "tables/taken_out.h"
#include "tables/traverse_text.h"

namespace brenu::tool {

namespace {

std::string NetworkText(const AdjustmentContext& context, const AdjustOptions& options) {
  const auto networks = AdjustedNetworks(context);
  const auto observations = ObservationsOf(context);
  std::string text = context.rules.AreTextbook() ? "Rules of textbooks\n" : "Classic rules\n";
  for (const Network network : networks) {
    text += '\n';
    text += network == Network::kHeights ? "Levelling network\n" : "Plane network\n";
    text += Summary(context, network, observations);
  }
  if (options.alpha) text += '\n' + TakenOutText(context, networks, observations);
  if (options.summaryOnly) return text;
  for (const Network network : networks) {
    text += network == Network::kHeights ? "\nAdjusted heights" : "\nAdjusted coordinates";
    text += " (* control point)\n" + PointTable(context, network);
  }
  return text;
}

std::string TraverseText(const AdjustmentContext& context, const AdjustOptions& options) {
  std::string text = "Traverses without orientation\n" + TraverseSummary(context);
  if (options.summaryOnly) return text;
  text += "\nCoordinates (* control point)\n" + CoordinateTable(context);
  return text + TraverseTables(context);
}

// Whether the format of the file allows the options; says so otherwise.
bool AreFit(const AdjustmentContext& context, const AdjustOptions& options) {
  if (options.alpha && !IsOrdinary(context)) {
    Say(options.file, "data snooping needs a network of format 0; leave out --snoop");
    return false;
  }
  if (IsUnoriented(context) && !options.resultFile.empty()) {
    Say(options.file,
        "traverses without orientation (format 1) have neither residuals nor precision to report; "
        "leave out --result");
    return false;
  }
  return true;
}

// Closure errors go first: the adjustment computes its approximate values itself.
Ending WriteClosures(AdjustmentContext& context, const AdjustOptions& options) {
  if (options.closureFile.empty()) return {};
  Ending ending = Ending::Of(ComputeClosures(context), kComputationFailed);
  if (ending.status != kDone) return ending;
  if (context.closeErrors.empty()) {
    Say(options.file, ending.findings);
    Say(options.file, "no closure report is written");
    return {};
  }
  return WriteClosureFile(context, options.closureFile);
}

// Whether everything was adjusted, and control and observations agree so far.
bool IsComplete(const Findings& findings) {
  return std::none_of(findings.begin(), findings.end(), [](const Finding& f) {
    return f.severity == Severity::kError || f.code == BRENU_POINT_LEFT_OUT ||
           f.code == BRENU_GROUP_LEFT_OUT || f.code == BRENU_POINTS_UNDETERMINED ||
           f.code == BRENU_HEIGHTS_LEFT_OUT || f.code == BRENU_CONTROL_DOES_NOT_FIT;
  });
}

Ending Adjust(AdjustmentContext& context, const AdjustOptions& options, Progress& progress,
              std::string& text) {
  context.rules = options.rules;
  if (!AreFit(context, options)) return {kFileOrUsage, {}};
  if (Findings found = CheckWeights(context); !found.empty()) {
    return {kFileOrUsage, std::move(found)};
  }
  progress.Enter("computing closure errors");
  Ending ending = WriteClosures(context, options);
  if (ending.status != kDone) return ending;
  progress.Enter(options.alpha ? "adjusting with data snooping" : "adjusting");
  Outcome computed =
      Compute(context, options.alpha, [&](int round) { progress.EnterRound(round); });
  if (!computed.ok) return Ending::Of(std::move(computed), kComputationFailed);
  ending = {IsComplete(computed.findings) ? kDone : kComputationFailed,
            std::move(computed.findings)};
  if (context.rules.AreTextbook() && !IsUnoriented(context)) {
    progress.Enter("comparing with the classic rules");
    for (Findings found : {CompareRules(context), CheckLevelSigma(context)}) {
      ending.findings.insert(ending.findings.end(), found.begin(), found.end());
    }
  }
  progress.Enter("making the tables");
  text = IsUnoriented(context) ? TraverseText(context, options) : NetworkText(context, options);
  if (options.resultFile.empty()) return ending;
  progress.Enter("writing the result report");
  Ending written = WriteResultFile(context, options.resultFile);
  if (written.status == kDone) return ending;
  Say(options.file, ending.findings);
  return written;
}

}  // namespace

ExitStatus RunAdjust(const AdjustOptions& options) {
  if (!AreDistinct({options.file, options.resultFile, options.closureFile})) return kFileOrUsage;
  return RunOnFile(options, [&](AdjustmentContext& context, Progress& progress, std::string& text) {
    return Adjust(context, options, progress, text);
  });
}

}  // namespace brenu::tool
