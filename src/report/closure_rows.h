#pragma once

#include <vector>

#include "job/adjustment_context.h"
#include "report/report.h"

namespace brenu {

// Of the context's list of closure errors.
std::vector<ClosureRow> ClosureRows(const AdjustmentContext& context);

}  // namespace brenu
