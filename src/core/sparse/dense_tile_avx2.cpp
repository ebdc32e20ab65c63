// Compiled with AVX2 and FMA (see the build file).
#include <immintrin.h>

#include "core/sparse/dense_tile.h"

namespace brenu {

namespace {

static_assert(kTileRows == 12 && kTileColumns == 4);

// A column of the tile.  Single variables, since compilers keep arrays of registers in memory.
struct Column {
  __m256d top, middle, bottom;

  static Column Zero() { return {_mm256_setzero_pd(), _mm256_setzero_pd(), _mm256_setzero_pd()}; }
  static Column Load(const double* from) {
    return {_mm256_loadu_pd(from), _mm256_loadu_pd(from + 4), _mm256_loadu_pd(from + 8)};
  }
  void Add(const Column& a, const double* b) {
    const __m256d factor = _mm256_broadcast_sd(b);
    top = _mm256_fmadd_pd(a.top, factor, top);
    middle = _mm256_fmadd_pd(a.middle, factor, middle);
    bottom = _mm256_fmadd_pd(a.bottom, factor, bottom);
  }
  void AddTo(double* c) const {
    const Column sum = Load(c);
    _mm256_storeu_pd(c, _mm256_add_pd(sum.top, top));
    _mm256_storeu_pd(c + 4, _mm256_add_pd(sum.middle, middle));
    _mm256_storeu_pd(c + 8, _mm256_add_pd(sum.bottom, bottom));
  }
};

}  // namespace

// Twelve sums at a time: as many as the latency of two multiply-adds a cycle needs, and more.
void MultiplyTileAvx2(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride) {
  Column c0 = Column::Zero();
  Column c1 = c0;
  Column c2 = c0;
  Column c3 = c0;
  for (std::ptrdiff_t p = 0; p < depth; ++p) {
    const Column column = Column::Load(a);
    c0.Add(column, b);
    c1.Add(column, b + 1);
    c2.Add(column, b + 2);
    c3.Add(column, b + 3);
    a += kTileRows;
    b += kTileColumns;
  }
  c0.AddTo(c);
  c1.AddTo(c + stride);
  c2.AddTo(c + 2 * stride);
  c3.AddTo(c + 3 * stride);
}

}  // namespace brenu
