#pragma once

#include <string>

#include "job/adjustment_context.h"
#include "review/language.h"

namespace brenu::tool {

struct ClosureTable {
  std::string text;  // a table for levelling and one for traverses, as far as there are records
  int count = 0, failed = 0;
};

// The closure errors last calculated: all, or only those beyond their limits.
ClosureTable MakeClosureTable(const AdjustmentContext& context, bool failedOnly, Language language);

}  // namespace brenu::tool
