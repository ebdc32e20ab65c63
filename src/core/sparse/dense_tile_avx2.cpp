// Compiled with AVX2 and FMA (see the build file).
#include <immintrin.h>

#include "core/sparse/dense_tile_wide.h"

namespace brenu {

namespace {

struct Register {
  static constexpr std::ptrdiff_t kWidth = 4;
  __m256d value;

  static Register All(double value) { return {_mm256_set1_pd(value)}; }
  static Register Load(const double* from) { return {_mm256_loadu_pd(from)}; }
  void AddProduct(Register a, Register b) { value = _mm256_fmadd_pd(a.value, b.value, value); }
  void AddTo(double* c) const { _mm256_storeu_pd(c, _mm256_add_pd(_mm256_loadu_pd(c), value)); }
};

}  // namespace

void MultiplyTileAvx2(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride) {
  MultiplyTileWide<Register>(depth, a, b, c, stride);
}

}  // namespace brenu
