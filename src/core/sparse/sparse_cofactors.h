#pragma once

#include <span>
#include <vector>

#include "core/normal_matrix.h"
#include "core/sparse/symbolic_factor.h"

namespace brenu {

// The cofactors a Q a^T between linear functions of the unknowns, whether or not these meet: a
// square by rows.  All unknowns of one function must meet.
//
// With y = L^-1 a they are sums of y y / d.  A function of unknowns that meet touches the columns
// on one way up the elimination tree only, and two functions have in common where their ways do.
std::vector<double> CofactorsBetween(const SymbolicFactor& symbolic, std::span<const double> factor,
                                     std::span<const std::vector<Term>> functions);

}  // namespace brenu
