#pragma once

#include <cstdint>

namespace brenu {

// Which rules a computation follows; docs/computations.md has a table of what differs.
enum class RuleSet : std::uint8_t {
  kClassic,  // those of the 61 functions, oddities included
  kTextbook
};

}  // namespace brenu
