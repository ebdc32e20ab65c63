#pragma once

#include <string>

#include "brenu/brenu.h"

namespace brenu::tool {

struct ClosureTable {
  std::string text;  // a table for levelling and one for traverses, as far as there are records
  int count = 0, failed = 0;
};

// The closure errors last calculated.
ClosureTable MakeClosureTable(AdjustmentContext& context);

}  // namespace brenu::tool
