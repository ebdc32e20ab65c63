#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// After an adjustment by the rules of textbooks: where the classic ones lead elsewhere by more than
// a standard error, or nowhere.  They are computed for that, so it is asked of networks of up to
// `kMostPointsCompared` points only.
inline constexpr std::size_t kMostPointsCompared = 20000;
Findings CompareRules(const AdjustmentContext& context);

// Whether the heights contradict the a-priori error that was assumed for levelling (chi-square test
// of the variance factor, two-sided, 5 %).
Findings CheckLevelSigma(const AdjustmentContext& context);

}  // namespace brenu
