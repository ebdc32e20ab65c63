#pragma once

#include <string>
#include <vector>

#include "command.h"

namespace CLI {
class App;
}

namespace brenu::tool {

struct ReduceOptions {
  std::string name;
  std::vector<std::string> arguments;
};

// Adds the command with a page of help for each of the sixteen reductions.
CLI::App& AddReduce(CLI::App& app, ReduceOptions& options);

// brenu reduce NAME ARGS...: prints the value of a reduction.
ExitStatus RunReduce(const ReduceOptions& options);

}  // namespace brenu::tool
