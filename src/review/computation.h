// What each format of job computes, with everything that a person wants said about it.  A result
// that means nothing is a failure here, with its cause among the findings as an error.
#pragma once

#include <optional>

#include "job/computations.h"

namespace brenu {

// Format 0: an adjustment, with data snooping by that test if one is given; format 1: traverses
// without orientation; format 3: distances alone, the points placed first.  Data snooping of what
// the rules have none for is refused.
Outcome Compute(AdjustmentContext& context,
                const std::optional<OutlierTest>& snooping = std::nullopt,
                const AnnounceRound& announceRound = {});

// The same for those who look at nothing but its findings: it does not begin with a-priori errors
// that cannot be, and says when those of levelling are contradicted.
Outcome ComputeChecked(AdjustmentContext& context, const std::optional<OutlierTest>& snooping);

// Approximate values alone.
Outcome ComputeApproximations(AdjustmentContext& context);

// The closure list of format 0; others have none, which is a warning.
Outcome ComputeClosures(AdjustmentContext& context);

// Approximate values by the rules of textbooks and, for ordinary networks, the closure errors: what
// can be said before an adjustment.  Findings name what the observations do not determine.
Outcome PlaceAndClose(AdjustmentContext& context);

}  // namespace brenu
