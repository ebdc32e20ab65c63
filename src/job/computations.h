// The computation entry points: which networks they run on, by network type.  Each begins with the
// network build, except where said otherwise; results stand in the context.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "job/adjustment_context.h"

namespace brenu {

// Called with the number of a round of data snooping before it begins.
using AnnounceRound = std::function<void(int)>;

Outcome RunApproxCalc(AdjustmentContext& context);
// With format 3 the plane network is adjusted as it stands, without a build.
Outcome RunLeastSquareAdj(AdjustmentContext& context);
// Fails unless the parameters ask for a computation without orientation.
Outcome RunNonDirectionAdj(AdjustmentContext& context);
// `kind` must equal the network type.
Outcome RunDataSnooping(AdjustmentContext& context, std::uint32_t kind, double levelAlpha,
                        double planeAlpha, const AnnounceRound& announceRound = {});

// The adjustment of the networks that the job has by the rules of textbooks, with data snooping by
// that test if one is given.  A network fails by itself; succeeds when one was
// adjusted.
Outcome RunTextbook(AdjustmentContext& context,
                    const std::optional<OutlierTest>& snooping = std::nullopt,
                    const AnnounceRound& announceRound = {});
// Approximate values by the same rules.
Outcome RunTextbookApprox(AdjustmentContext& context);

// The set-up step of the plane network alone, without a build.
Outcome PreparePlane(AdjustmentContext& context);

}  // namespace brenu
