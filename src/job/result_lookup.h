// Results by store index: the index becomes a name, the name finds the point in the networks.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "job/adjustment_context.h"

namespace brenu {

// By network type: plane numbers for types 2 and 3 (the height of type 3 is that of the point
// stored under the index of the same value), store indices for type 1.
std::optional<PointData> ApproxResult(const AdjustmentContext& context, std::int32_t number);

std::optional<PlaneResult> PlanePointResult(const AdjustmentContext& context, std::int32_t index);
std::optional<PlaneObsResult> DirectionResult(const AdjustmentContext& context,
                                              std::int32_t station, std::string_view target);
std::optional<PlaneObsResult> DistanceResult(const AdjustmentContext& context, std::int32_t station,
                                             std::string_view target);
std::optional<PlaneObsResult> AzimuthResult(const AdjustmentContext& context, std::int32_t station,
                                            std::string_view target);
std::optional<LinePrecision> LineResult(const AdjustmentContext& context, std::int32_t station,
                                        std::string_view target);

// By the rules of textbooks; of control points that something checks.
std::optional<ControlFit> PlaneControlFit(const AdjustmentContext& context, std::int32_t index);
std::optional<BenchMarkFit> HeightControlFit(const AdjustmentContext& context, std::int32_t index);

// Null pointers for a point on no computed traverse.
TraverseTable::Row TraverseRow(const AdjustmentContext& context, std::int32_t index);

// These two add an empty point to the store when it has none under the index.
std::optional<VerticalResult> HeightResult(AdjustmentContext& context, std::int32_t index);
std::optional<HeightObsResult> HeightDiffResult(AdjustmentContext& context, std::int32_t station,
                                                std::string_view target);

}  // namespace brenu
