#pragma once

#include <string>

#include "command.h"

namespace CLI {
class App;
}

namespace brenu::tool {

struct ConvertOptions {
  std::string in, out;
  std::string to;  // "project", "station" or "gkf"; empty: by `in` and the ending of `out`
  Language language = LanguageOfEnvironment();
};

// Adds the command and its options, which are set when it is given.
CLI::App& AddConvert(CLI::App& app, ConvertOptions& options);

// brenu convert IN OUT: between project file, station and observation file and gama-local XML.
ExitStatus RunConvert(const ConvertOptions& options);

}  // namespace brenu::tool
