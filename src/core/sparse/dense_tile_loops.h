// The loops of MultiplyTile, compiled once for every instruction set.  Nothing from the standard
// library may be called here: the linker would keep one copy, maybe the one with the wide
// instructions.
#pragma once

#include "core/restrict.h"
#include "core/sparse/dense_tile.h"

namespace brenu {
namespace {

// Rows 0..kRows-1 of the tile.  The sums stay in registers: kRows must not be too large for them.
template <std::ptrdiff_t kRows>
inline void MultiplyRows(std::ptrdiff_t depth, const double* BRENU_RESTRICT a,
                         const double* BRENU_RESTRICT b, double* BRENU_RESTRICT c,
                         std::ptrdiff_t stride) {
  double sums[kTileColumns][kRows] = {};
  for (std::ptrdiff_t p = 0; p < depth; ++p) {
    for (std::ptrdiff_t j = 0; j < kTileColumns; ++j) {
      for (std::ptrdiff_t i = 0; i < kRows; ++i) sums[j][i] += a[i] * b[j];
    }
    a += kTileRows;
    b += kTileColumns;
  }
  for (std::ptrdiff_t j = 0; j < kTileColumns; ++j) {
    for (std::ptrdiff_t i = 0; i < kRows; ++i) c[j * stride + i] += sums[j][i];
  }
}

}  // namespace
}  // namespace brenu
