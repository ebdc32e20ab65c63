#pragma once

#include <cstdint>

#include "api/adjustment_context.h"

namespace brenu {

// Computes approximate values, then fills the context's closure list: levelling lines and loops,
// after them the traverses.  False, with the list as it was, when the approximate values cannot be
// computed; false, with an empty list, when the network has neither kind of closure.
bool CalculateClosures(AdjustmentContext& context);

// Whether every record of the list passes.
bool AllClosuresPass(const AdjustmentContext& context);

}  // namespace brenu
