#include "closures_command.h"

#include "report/traverse_text.h"
#include "review/computation.h"
#include "review/network_view.h"
#include "tables/closure_table.h"

namespace brenu::tool {

namespace {

Ending Check(AdjustmentContext& context, const ClosureOptions& options, std::string& text) {
  context.rules = options.rules;
  if (IsUnoriented(context)) {
    Ending ending = Ending::Of(Compute(context), kComputationFailed);
    if (ending.status == kDone) {
      text = kTraversesWithoutOrientation.In(options.language) +
             std::string(Words{", no limits\n", "，无限差\n"}.In(options.language)) +
             TraverseSummary(context, options.language);
    }
    return ending;
  }
  Ending ending = Ending::Of(ComputeClosures(context), kComputationFailed);
  if (ending.status != kDone) return ending;
  const ClosureTable table = MakeClosureTable(context, options.failedOnly, options.language);
  text = table.text;
  if (table.failed > 0) {
    ending.status = kComputationFailed;
    ending.findings.push_back(
        Error(BRENU_CLOSURES_FAILED, {}, {1.0 * table.failed, 1.0 * table.count}));
  }
  return ending;
}

}  // namespace

ExitStatus RunClosures(const ClosureOptions& options) {
  return RunOnFile(options, [&](AdjustmentContext& context, const Findings&, Progress& progress,
                                std::string& text) {
    progress.Enter({"computing closure errors", "计算闭合差"});
    return Check(context, options, text);
  });
}

}  // namespace brenu::tool
