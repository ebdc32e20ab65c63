// Compiled with AVX2 and FMA (see the build file).
#include "core/sparse/dense_tile_loops.h"

namespace brenu {

void MultiplyTileAvx2(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride) {
  MultiplyRows<kTileRows>(depth, a, b, c, stride);
}

}  // namespace brenu
