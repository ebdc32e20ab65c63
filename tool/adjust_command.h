#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command.h"
#include "outputs.h"

namespace brenu::tool {

struct AdjustOptions : FileOptions {
  std::string resultFile, closureFile;  // where the reports go; empty for none
  OutputOptions outputs;
  std::optional<double> alpha;  // for data snooping: its level of significance, in (0, 1)
  std::vector<std::pair<std::string, std::string>> pairs;  // relative ellipses asked for
  bool summaryOnly = false;                                // no tables of points
  bool noVerdict = false;  // a network that does not pass is no failure
  Rules rules{RuleSet::kTextbook};
};

// brenu adjust FILE: prints a summary and the adjusted points on the standard output and writes the
// reports asked for.
ExitStatus RunAdjust(const AdjustOptions& options);

}  // namespace brenu::tool
