#pragma once

#include "job/adjustment_context.h"
#include "report/report.h"

namespace brenu {

// What the last adjustment found, with its verdict.  `found` is what reading, checking and
// adjusting had to say; the closures are those of the context's list.
Report MakeReport(const AdjustmentContext& context, std::string file, Findings found);

}  // namespace brenu
