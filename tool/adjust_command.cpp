#include "adjust_command.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include "brenu/brenu.h"
#include "data_check.h"
#include "diagnosis.h"
#include "direction_check.h"
#include "format.h"
#include "load.h"
#include "network_view.h"
#include "point_table.h"
#include "summary.h"

namespace brenu::tool {

namespace {

struct CloseJob {
  void operator()(AdjustmentContext* context) const { EndAdjustment(context); }
};
using Job = std::unique_ptr<AdjustmentContext, CloseJob>;

void Say(const std::string& path, const std::string& sentence) {
  std::fprintf(stderr, "brenu: %s: %s\n", Printable(path).c_str(), sentence.c_str());
}

std::optional<Fault> Adjust(AdjustmentContext* context) {
  if (auto sentence = FindDataFault(*context)) return Fault{kFileOrUsage, *sentence};
  if (!ApproxCalc(context)) return Fault{kComputationFailed, ExplainNoApproximation(*context)};
  if (auto sentence = FindTurnedDirection(*context)) return Fault{kComputationFailed, *sentence};
  if (!LeastSquareAdj(context)) return Fault{kComputationFailed, ExplainNoSolution(*context)};
  if (auto sentence = FindSenselessResult(*context)) return Fault{kComputationFailed, *sentence};
  if (auto sentence = FindTurnedDirection(*context)) return Fault{kComputationFailed, *sentence};
  return std::nullopt;
}

std::string ResultText(AdjustmentContext* context) {
  const auto networks = AdjustedNetworks(*context);
  const auto observations = ObservationsOf(*context);
  std::string text;
  for (const Network network : networks) {
    text += network == Network::kHeights ? "Levelling network\n" : "Plane network\n";
    text += Summary(context, network, observations) + '\n';
  }
  for (const Network network : networks) {
    text += network == Network::kHeights ? "Adjusted heights" : "Adjusted coordinates";
    text += " (* control point)\n" + PointTable(context, network);
    if (network != networks.back()) text += '\n';
  }
  return text;
}

}  // namespace

ExitStatus RunAdjust(const std::string& path) {
  const Job job(StartAdjustment());
  std::vector<std::string> warnings;
  std::optional<Fault> fault = LoadFile(job.get(), path, warnings);
  if (!fault) {
    if (auto doubt = DoubtAboutDistanceErrors(*job)) warnings.push_back(*doubt);
    for (const std::string& warning : warnings) Say(path, "warning: " + warning);
    fault = Adjust(job.get());
  }
  if (fault) {
    Say(path, fault->sentence);
    return fault->status;
  }
  const std::string text = ResultText(job.get());
  const bool written =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (written) return kDone;
  Say(path, "the results cannot be written to the standard output; make room for them");
  return kFileOrUsage;
}

}  // namespace brenu::tool
