#pragma once

#include <vector>

#include "level/level_net.h"

namespace brenu {

// Closure errors of a height network, appended as records without flags.  Both give false when
// there can be none, for negative or infinite line lengths, and for observations to names without
// a point.

// Of the shortest lines between any two bench marks, with at least two observations each; `heights`
// are those of the bench marks, metres.
bool CalcLineCloseError(const LevelNet& net, const Table<Slot, double>& heights,
                        std::vector<CloseError>& records);
// Of loops, in which each observation starts one loop at most.
bool CalcLoopCloseError(const LevelNet& net, std::vector<CloseError>& records);

}  // namespace brenu
