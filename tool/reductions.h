#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace brenu::tool {

// One of the sixteen reductions as the command line has it.
struct Reduction {
  std::string_view name;
  std::string_view what;       // one sentence
  std::string_view formula;    // and what its letters are
  std::string_view arguments;  // "NAME:unit ..."; angles are of the unit dms
  std::string_view results;
  std::vector<double> (*compute)(std::span<const double> arguments);  // angles in radians
};

std::span<const Reduction> Reductions();

}  // namespace brenu::tool
