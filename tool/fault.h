#pragma once

#include <string>

namespace brenu::tool {

enum ExitStatus : int {
  kDone = 0,
  kComputationFailed = 1,  // the network cannot be computed, or does not stand a check
  kFileOrUsage = 2,        // a file or the command line is at fault
};

// Why the program cannot go on: one sentence that says what is wrong and what to do.
struct Fault {
  ExitStatus status;
  std::string sentence;
};

}  // namespace brenu::tool
