#pragma once

#include "command.h"

namespace brenu::tool {

struct ClosureOptions : FileOptions {
  bool failedOnly = false;  // no rows of records that pass
  Rules rules{RuleSet::kTextbook};
};

// brenu closures FILE: prints the closure errors of levelling lines and loops and of traverses with
// their limits; the status is kComputationFailed when one is beyond its limit.
ExitStatus RunClosures(const ClosureOptions& options);

}  // namespace brenu::tool
