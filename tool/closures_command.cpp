#include "closures_command.h"

#include "closure_table.h"
#include "command.h"
#include "computation.h"
#include "data_check.h"
#include "diagnosis.h"
#include "network_view.h"
#include "traverse_text.h"

namespace brenu::tool {

namespace {

std::optional<Fault> Check(AdjustmentContext& context, const std::string& path, std::string& text) {
  if (auto sentence = FindDataFault(context)) return Fault{kFileOrUsage, *sentence};
  if (IsUnoriented(context)) {
    if (auto fault = ComputeTraverses(context)) return fault;
    text = "Traverses without orientation, no limits\n" + TraverseSummary(context);
    return std::nullopt;
  }
  if (auto fault = ComputeClosures(context)) return fault;
  const ClosureTable table = MakeClosureTable(context);
  text = table.text;
  if (table.count == 0) Say(path, NoClosures(context));
  if (table.failed == 0) return std::nullopt;
  return Fault{kComputationFailed,
               std::to_string(table.failed) + " of " + std::to_string(table.count) +
                   " closure errors are beyond their limits; look for gross errors along the "
                   "routes that failed"};
}

}  // namespace

ExitStatus RunClosures(const std::string& path) {
  return RunOnFile(path, [&](AdjustmentContext& context, Progress& progress, std::string& text) {
    progress.Enter("computing closure errors");
    return Check(context, path, text);
  });
}

}  // namespace brenu::tool
