#pragma once

#include <cstddef>

#include "core/sparse/dense_product.h"
#include "core/sparse/pivot_check.h"

namespace brenu {

// Factorises the columns of a panel of `height` x `width`, height >= width, stored by columns that
// are `stride` apart: on top L D L^T with unit lower L, without pivoting, below the rows of L that
// follow.  L and in the place of its ones D replace the panel; what lies above the diagonal is
// undefined.  False when a pivot vanishes beside 1.0 (an absolute test, without regard to signs).
// With a check that decides instead, and no factorisation fails; the first column is that of
// `place`.
bool FactorPanel(double* panel, std::ptrdiff_t stride, std::ptrdiff_t height, std::ptrdiff_t width,
                 DenseProduct& product, PivotCheck* check = nullptr, std::ptrdiff_t place = 0);

// The inverse of a unit lower triangular matrix; its diagonal is not read.  `inverse` is a square
// of zeros, stored by columns of `size` elements, and receives the whole lower triangle; `work`
// holds at least size^2 / 4 elements.
void InvertUnitLower(MatrixView lower, std::ptrdiff_t size, double* inverse, double* work,
                     DenseProduct& product);

}  // namespace brenu
