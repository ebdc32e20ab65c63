#pragma once

#include <cstdint>

namespace brenu {

// Which rules a computation follows; docs/computations.md has a table of what differs.
enum class RuleSet : std::uint8_t {
  kClassic,  // those of the 61 functions, oddities included
  kTextbook
};

struct Rules {
  RuleSet set = RuleSet::kClassic;
  double levelSigma = 0.001;  // a-priori standard error of 1 km of levelling, metres

  bool AreTextbook() const { return set == RuleSet::kTextbook; }
};

}  // namespace brenu
