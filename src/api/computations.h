// The computation entry points: which networks they run on, by network type.
#pragma once

#include "api/adjustment_context.h"

namespace brenu {

bool RunApproxCalc(AdjustmentContext& context);
bool RunLeastSquareAdj(AdjustmentContext& context);

}  // namespace brenu
