// How observations fit before an adjustment: against approximate values, and against what was
// observed from the other end.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "job/adjustment_context.h"
#include "review/observation_kind.h"

namespace brenu {

struct Misfit {
  ObsKind kind;
  std::string from, to;  // as the file has them
  double observed;       // metres or radians
  double difference;     // observed minus computed, or one way minus the other: metres, arc-seconds
  double ratio;          // that by its a-priori standard error
};

// Observed minus computed from the approximate values of the last computation, the largest by its
// standard error first.  Directions are oriented by the median of their set.  Observations whose
// ends have no approximate values are left out.
std::vector<Misfit> ObservedMinusComputed(const AdjustmentContext& context);

// Differences of distances and height differences that were observed in both ways, likewise.
std::vector<Misfit> TwoWayDifferences(const AdjustmentContext& context);

// Beyond three standard errors.
bool IsLarge(const Misfit& misfit);

// What a person looks at: the first ones, as long as they are large; of observations that fit, a
// few to show so.
std::span<const Misfit> Foremost(std::span<const Misfit> misfits);

}  // namespace brenu
