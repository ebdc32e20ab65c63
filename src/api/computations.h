// The computation entry points: which networks they run on, by network type.
#pragma once

#include <cstdint>

#include "api/adjustment_context.h"

namespace brenu {

bool RunApproxCalc(AdjustmentContext& context);
bool RunLeastSquareAdj(AdjustmentContext& context);
// False unless the parameters ask for a computation without orientation.
bool RunNonDirectionAdj(AdjustmentContext& context);
// `kind` must equal the network type.
bool RunDataSnooping(AdjustmentContext& context, std::uint32_t kind, double levelAlpha,
                     double planeAlpha);

}  // namespace brenu
