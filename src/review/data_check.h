#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// What can be said about the data of a job before anything is computed: errors that spoil every
// result, and doubts about values that look like slips.
Findings CheckData(const AdjustmentContext& context);

// Errors in the a-priori standard errors, which an adjustment needs and closure errors do not.
Findings CheckWeights(const AdjustmentContext& context);

// Names that a report in code page 936 shows as other characters.
Findings CheckNamesForGbk(const AdjustmentContext& context);

}  // namespace brenu
