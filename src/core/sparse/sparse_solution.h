#pragma once

#include <span>

#include "core/sparse/symbolic_factor.h"

namespace brenu {

// Replaces a right-hand side, by place in the elimination order, by the solution.
void SolveSparse(const SymbolicFactor& symbolic, std::span<const double> factor,
                 std::span<double> x);
// The second half of it alone: x of L^T x = D^-1 y.
void SolveBackward(const SymbolicFactor& symbolic, std::span<const double> factor,
                   std::span<double> y);
// L y = b of one supernode alone: its own part of y, and what that takes from the rows below.
void SolveForward(const SymbolicFactor& symbolic, const Supernode& s, const double* panel,
                  double* x);

}  // namespace brenu
