// Compiled with AVX-512 (see the build file).
#include <immintrin.h>

#include "core/sparse/dense_tile_wide.h"

namespace brenu {

namespace {

struct Register {
  static constexpr std::ptrdiff_t kWidth = 8;
  __m512d value;

  static Register All(double value) { return {_mm512_set1_pd(value)}; }
  static Register Load(const double* from) { return {_mm512_loadu_pd(from)}; }
  void AddProduct(Register a, Register b) { value = _mm512_fmadd_pd(a.value, b.value, value); }
  void AddTo(double* c) const { _mm512_storeu_pd(c, _mm512_add_pd(_mm512_loadu_pd(c), value)); }
};

}  // namespace

void MultiplyTileAvx512(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                        std::ptrdiff_t stride) {
  MultiplyTileWide<Register>(depth, a, b, c, stride);
}

}  // namespace brenu
