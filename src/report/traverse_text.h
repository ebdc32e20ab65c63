// The traverses of the last NonDirectionAdj as text.
#pragma once

#include <string>

#include "job/adjustment_context.h"
#include "review/language.h"

namespace brenu {

inline constexpr Words kTraversesWithoutOrientation = {"Traverses without orientation",
                                                       "无定向导线"};

// A row a traverse: length, linear misclosure, relative precision, route.
std::string TraverseSummary(const AdjustmentContext& context, Language language);

// The coordinates of all points, control points marked by a star.
std::string CoordinateTable(const AdjustmentContext& context, Language language);

// The table of every traverse, each after an empty line and the names of its ends.
std::string TraverseTables(const AdjustmentContext& context, Language language);

}  // namespace brenu
