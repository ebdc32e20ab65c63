#include "core/sparse/dense_tile_loops.h"

namespace brenu {

void MultiplyTileBaseline(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                          std::ptrdiff_t stride) {
  constexpr std::ptrdiff_t kHalf = kTileRows / 2;
  MultiplyRows<kHalf>(depth, a, b, c, stride);
  MultiplyRows<kHalf>(depth, a + kHalf, b, c + kHalf, stride);
}

}  // namespace brenu
