#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/sparse/symbolic_factor.h"

namespace brenu {

// The supernodes shared out among workers: whole subtrees of the elimination tree, which are
// computed side by side, and the supernodes above, the top separators.
struct Subtrees {
  // Supernodes first..end-1.  The last is the root.
  struct Range {
    std::int32_t first, end;
    double work;  // operations
  };
  std::vector<Range> ranges;        // those with the most work first
  std::vector<std::int32_t> above;  // ascending

  // One range of everything for a single worker, and where more do not pay.
  Subtrees(const SymbolicFactor& symbolic, std::size_t workers);
};

}  // namespace brenu
