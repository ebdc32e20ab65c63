#include "core/restrict.h"
#include "core/sparse/dense_tile.h"

namespace brenu {

namespace {

// The sums of so many rows stay in registers.
constexpr std::ptrdiff_t kRows = 4;
static_assert(kTileRows % kRows == 0);

void MultiplyRows(std::ptrdiff_t depth, const double* BRENU_RESTRICT a,
                  const double* BRENU_RESTRICT b, double* BRENU_RESTRICT c, std::ptrdiff_t stride) {
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

void MultiplyTileBaseline(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                          std::ptrdiff_t stride) {
  for (std::ptrdiff_t i = 0; i < kTileRows; i += kRows)
    MultiplyRows(depth, a + i, b, c + i, stride);
}

}  // namespace brenu
