// Level lines: readings to setups, setups to lines between named points.
#pragma once

#include <cstdint>
#include <vector>

#include "core/finding.h"
#include "fieldbook/field_book.h"
#include "fieldbook/set_log.h"

namespace brenu {

// The lines of a field book between named points, one for each time that they were levelled;
// lengths are the sums of the distances to the staffs.
//
// A turning point has no name or one of digits only, and neither begins nor ends a line of the
// book; intermediate sights are lines of their own, from the back point to the point sighted.  An
// intermediate sight whose back point has no name counts from the last named point.
std::vector<HeightLine> LevelLinesOf(const FieldBook& book, const PointNames& names,
                                     Findings& findings, SetLog log);

// Lines of the same direction between the same points: the mean height difference, and the mean
// length divided by their number, which is what the mean weighs.
std::vector<HeightLine> MeanLines(const std::vector<HeightLine>& lines, SetLog log);

}  // namespace brenu
