#pragma once

#include <span>

#include "core/sparse/pivot_check.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

// Replaces a symmetric matrix by its factors L D L^T, L unit lower triangular and D in the place of
// its diagonal, without pivoting.  The elements stand as `symbolic` says; the multifrontal method
// (Duff and Reid, The multifrontal solution of indefinite sparse symmetric linear equations) on
// supernodes.  False when a pivot vanishes beside 1.0 (an absolute test, without regard to signs);
// the elements are then partly transformed.  With a check that decides instead, and no factorisation
// fails.
bool FactorSparse(const SymbolicFactor& symbolic, std::span<double> elements,
                  PivotCheck* check = nullptr);

// Replaces a right-hand side, by place in the elimination order, by the solution.
void SolveSparse(const SymbolicFactor& symbolic, std::span<const double> factor,
                 std::span<double> x);
// The second half of it alone: x of L^T x = D^-1 y.
void SolveBackward(const SymbolicFactor& symbolic, std::span<const double> factor,
                   std::span<double> y);

}  // namespace brenu
