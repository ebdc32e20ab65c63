#pragma once

#include "command.h"

namespace brenu::tool {

struct CheckOptions : FileOptions {
  Rules rules{RuleSet::kTextbook};
};

// brenu check FILE: what can be said before an adjustment; the status is kComputationFailed when
// the observations do not determine everything.
ExitStatus RunCheck(const CheckOptions& options);

}  // namespace brenu::tool
