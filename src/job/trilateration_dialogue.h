// Trilateration as the host leads it: one point after the other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "job/adjustment_context.h"

namespace brenu {

// Builds the networks and takes all new points back; fails unless the parameters say that only
// distances are used.
Outcome BeginTrilateration(AdjustmentContext& context);

// The point to place next (the named one, if a name is given) with its two circles, and a line of
// text about it.
struct TrilaterationStep {
  CircleRecord first, second;
  std::string text;
};
std::optional<TrilaterationStep> NextTrilaterationStep(AdjustmentContext& context,
                                                       std::string_view name);

// Places a point and says how many are left, but for networks without a plane part.
Outcome PlaceByTrilateration(AdjustmentContext& context, bool right, const CircleRecord& first,
                             const CircleRecord& second, std::string_view name,
                             std::uint32_t& remaining);

// Sets the plane network up with the places of its points and derives the directions of the
// measured lines; fails unless all new points are placed.
Outcome FinishTrilateration(AdjustmentContext& context);

}  // namespace brenu
