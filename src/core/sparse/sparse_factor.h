#pragma once

#include <span>

#include "core/sparse/pivot_check.h"
#include "core/sparse/stored_equations.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

// Computes the factors L D L^T of a symmetric matrix, L unit lower triangular and D in the place of
// its diagonal, without pivoting.  The elements stand as `symbolic` says and need not be set
// before; the multifrontal method (Duff and Reid, The multifrontal solution of indefinite sparse
// symmetric linear equations) on supernodes.  False when a pivot vanishes beside 1.0 (an absolute
// test, without regard to signs); the elements then mean nothing.  With a check that decides
// instead, and no factorisation fails.
bool FactorSparse(const SymbolicFactor& symbolic, const StoredEquations& matrix,
                  std::span<double> elements, PivotCheck* check = nullptr);

}  // namespace brenu
