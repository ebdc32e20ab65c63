#pragma once

#include "api/adjustment_context.h"

namespace brenu {

// Computes approximate values, then fills the context's closure list: levelling lines and loops,
// after them the traverses.  False, with the list as it was, when the approximate values cannot be
// computed; false, with an empty list, when a network of both kinds has no closure of either.
bool CalculateClosures(AdjustmentContext& context);

// Whether every record of the list passes.
bool AllClosuresPass(const AdjustmentContext& context);

}  // namespace brenu
