#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// Computes approximate values, then fills the context's closure list: levelling lines and loops,
// after them the traverses.  Fails, with the list as it was, when the approximate values cannot be
// computed; fails, with an empty list, when a network of both kinds has no closure of either.
Outcome CalculateClosures(AdjustmentContext& context);

// The same with approximate values by the rules of textbooks: points that these do not reach have
// no closures.
Outcome CalculateTextbookClosures(AdjustmentContext& context);

// Whether every record of the list passes.
bool AllClosuresPass(const AdjustmentContext& context);

}  // namespace brenu
