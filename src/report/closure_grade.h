#pragma once

#include <vector>

#include "report/report.h"

namespace brenu {

struct ClosureFault {
  Finding finding;
  double share;  // misclosure by its limit
};

// What of a closure is beyond its limit, with the grade that set the limit and the finest that the
// misclosure meets; 0 for none.
std::vector<ClosureFault> BeyondLimit(const ClosureRow& row, const AdjParam& param);

}  // namespace brenu
