// The tile in wide registers.  Included by the files that are compiled for one kind of processor
// each: all of it stays inside of them.
#pragma once

#include "core/sparse/dense_tile.h"

namespace brenu {

namespace {

static_assert(kTileColumns == 6);

// A column of the tile in two registers.  Single variables, since compilers keep arrays of
// registers in memory.
template <typename Register>
struct TileColumn {
  Register top, bottom;

  static TileColumn Load(const double* from) {
    return {Register::Load(from), Register::Load(from + Register::kWidth)};
  }
  void Add(const TileColumn& a, const double* b) {
    const Register factor = Register::All(*b);
    top.AddProduct(a.top, factor);
    bottom.AddProduct(a.bottom, factor);
  }
  void AddTo(double* c) const {
    top.AddTo(c);
    bottom.AddTo(c + Register::kWidth);
  }
};

// Twelve sums at a time: as many as the latency of two multiply-adds a cycle needs, and more.
template <typename Register>
void MultiplyTileWide(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride) {
  constexpr std::ptrdiff_t kRows = 2 * Register::kWidth;
  static_assert(kTileRows % kRows == 0);
  for (std::ptrdiff_t i = 0; i < kTileRows; i += kRows) {
    const double* ai = a + i;
    const double* bi = b;
    const Register zero = Register::All(0.0);
    TileColumn<Register> c0 = {zero, zero};
    TileColumn<Register> c1 = c0;
    TileColumn<Register> c2 = c0;
    TileColumn<Register> c3 = c0;
    TileColumn<Register> c4 = c0;
    TileColumn<Register> c5 = c0;
    for (std::ptrdiff_t p = 0; p < depth; ++p) {
      const auto column = TileColumn<Register>::Load(ai);
      c0.Add(column, bi);
      c1.Add(column, bi + 1);
      c2.Add(column, bi + 2);
      c3.Add(column, bi + 3);
      c4.Add(column, bi + 4);
      c5.Add(column, bi + 5);
      ai += kTileRows;
      bi += kTileColumns;
    }
    double* const ci = c + i;
    c0.AddTo(ci);
    c1.AddTo(ci + stride);
    c2.AddTo(ci + 2 * stride);
    c3.AddTo(ci + 3 * stride);
    c4.AddTo(ci + 4 * stride);
    c5.AddTo(ci + 5 * stride);
  }
}

}  // namespace

}  // namespace brenu
