// What each format of job computes, with everything that a person wants said about it.  A result
// that means nothing is a failure here, with its cause among the findings as an error.
#pragma once

#include <optional>

#include "job/computations.h"

namespace brenu {

// Format 0: an adjustment, with data snooping at that level of significance if one is given;
// format 1: traverses without orientation; format 3: distances alone, the points placed first.
Outcome Compute(AdjustmentContext& context, std::optional<double> snoopingAlpha = std::nullopt,
                const AnnounceRound& announceRound = {});

// The closure list of format 0; others have none, which is a warning.
Outcome ComputeClosures(AdjustmentContext& context);

// Approximate values by the rules of textbooks and, for ordinary networks, the closure errors: what
// can be said before an adjustment.  Findings name what the observations do not determine.
Outcome PlaceAndClose(AdjustmentContext& context);

}  // namespace brenu
