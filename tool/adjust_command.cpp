#include "adjust_command.h"

#include <vector>

#include "job/adjustment_context.h"
#include "command.h"
#include "computation.h"
#include "data_check.h"
#include "network_view.h"
#include "point_table.h"
#include "report_files.h"
#include "summary.h"
#include "taken_out.h"
#include "traverse_text.h"

namespace brenu::tool {

namespace {

std::string NetworkText(AdjustmentContext& context, const AdjustOptions& options) {
  const auto networks = AdjustedNetworks(context);
  const auto observations = ObservationsOf(context);
  std::string text;
  for (const Network network : networks) {
    if (!text.empty()) text += '\n';
    text += network == Network::kHeights ? "Levelling network\n" : "Plane network\n";
    text += Summary(&context, network, observations);
  }
  if (options.alpha) text += '\n' + TakenOutText(context, networks, observations);
  if (options.summaryOnly) return text;
  for (const Network network : networks) {
    text += network == Network::kHeights ? "\nAdjusted heights" : "\nAdjusted coordinates";
    text += " (* control point)\n" + PointTable(&context, network);
  }
  return text;
}

std::string TraverseText(AdjustmentContext& context, const AdjustOptions& options) {
  std::string text = "Traverses without orientation\n" + TraverseSummary(context);
  if (options.summaryOnly) return text;
  text += "\nCoordinates (* control point)\n" + CoordinateTable(&context);
  return text + TraverseTables(context);
}

// Options that the format of the file does not allow.
std::optional<Fault> UnfitOption(const AdjustmentContext& context, const AdjustOptions& options) {
  if (options.alpha && !IsOrdinary(context)) {
    return Fault{kFileOrUsage, "data snooping needs a network of format 0; leave out --snoop"};
  }
  if (IsUnoriented(context) && !options.resultFile.empty()) {
    return Fault{kFileOrUsage,
                 "traverses without orientation (format 1) have neither residuals nor precision to "
                 "report; leave out --result"};
  }
  return std::nullopt;
}

std::optional<Fault> Compute(AdjustmentContext& context, const AdjustOptions& options) {
  if (IsDistancesOnly(context)) return AdjustDistancesOnly(context);
  if (IsUnoriented(context)) return ComputeTraverses(context);
  return options.alpha ? SnoopNetwork(context, *options.alpha) : AdjustNetwork(context);
}

void SayDoubts(AdjustmentContext& context, const std::string& file) {
  for (const auto& doubt : {DoubtAboutDistanceErrors(context), DoubtAboutLineLengths(context),
                            DoubtAboutAzimuths(context), DoubtAboutFormat(context)}) {
    if (doubt) Say(file, "warning: " + *doubt);
  }
}

// Closure errors go first: they recompute the approximate values.
std::optional<Fault> WriteClosures(AdjustmentContext& context, const AdjustOptions& options) {
  if (options.closureFile.empty()) return std::nullopt;
  if (auto fault = ComputeClosures(context)) return fault;
  if (GetCloseErrorCount(&context) > 0) return WriteClosureFile(context, options.closureFile);
  Say(options.file, NoClosures(context) + ", so that no closure report is written");
  return std::nullopt;
}

std::optional<Fault> Adjust(AdjustmentContext& context, const AdjustOptions& options,
                            Progress& progress, std::string& text) {
  progress.Enter("checking the data");
  if (auto fault = UnfitOption(context, options)) return fault;
  for (const auto& sentence : {FindDataFault(context), FindWeightFault(context)}) {
    if (sentence) return Fault{kFileOrUsage, *sentence};
  }
  SayDoubts(context, options.file);
  progress.Enter("computing closure errors");
  if (auto fault = WriteClosures(context, options)) return fault;
  progress.Enter(options.alpha ? "adjusting with data snooping" : "adjusting");
  if (auto fault = Compute(context, options)) return fault;
  progress.Enter("making the tables");
  text = IsUnoriented(context) ? TraverseText(context, options) : NetworkText(context, options);
  if (options.resultFile.empty()) return std::nullopt;
  progress.Enter("writing the result report");
  return WriteResultFile(context, options.resultFile);
}

}  // namespace

ExitStatus RunAdjust(const AdjustOptions& options) {
  if (auto sentence = FindSharedFile({options.file, options.resultFile, options.closureFile})) {
    Say(options.file, *sentence);
    return kFileOrUsage;
  }
  return RunOnFile(options.file,
                   [&](AdjustmentContext& context, Progress& progress, std::string& text) {
                     return Adjust(context, options, progress, text);
                   });
}

}  // namespace brenu::tool
