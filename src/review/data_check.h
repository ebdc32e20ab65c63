#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// What can be said about the data of a job before anything is computed: errors that spoil every
// result, and doubts about values that look like slips.
Findings CheckData(const AdjustmentContext& context);

// Errors in the a-priori standard errors, which an adjustment needs and closure errors do not.
Findings CheckWeights(const AdjustmentContext& context);

}  // namespace brenu
