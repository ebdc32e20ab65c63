#pragma once

#include <span>

#include "core/sparse/symbolic_factor.h"

namespace brenu {

// Replaces a symmetric matrix by its factors L D L^T, L unit lower triangular and D in the place of
// its diagonal, without pivoting.  The elements stand as `symbolic` says; the multifrontal method
// (Duff and Reid, The multifrontal solution of indefinite sparse symmetric linear equations) on
// supernodes.  False when a pivot vanishes beside 1.0 (an absolute test, without regard to signs);
// the elements are then partly transformed.
bool FactorSparse(const SymbolicFactor& symbolic, std::span<double> elements);

// Replaces a right-hand side, by place in the elimination order, by the solution.
void SolveSparse(const SymbolicFactor& symbolic, std::span<const double> factor,
                 std::span<double> x);

}  // namespace brenu
