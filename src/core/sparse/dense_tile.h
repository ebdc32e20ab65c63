#pragma once

#include <cstddef>

namespace brenu {

// The register block of dense products: a tile of kTileRows x kTileColumns.
inline constexpr std::ptrdiff_t kTileRows = 12;
inline constexpr std::ptrdiff_t kTileColumns = 4;

// C += A B^T for one tile.  Column p of A and of B stands at a + p kTileRows and b + p
// kTileColumns; C is stored by columns that are `stride` apart.
using MultiplyTile = void (*)(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                              std::ptrdiff_t stride);

void MultiplyTileBaseline(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                          std::ptrdiff_t stride);
#ifdef BRENU_AVX2_TILE
void MultiplyTileAvx2(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride);
#endif

// The widest that this processor can run.
MultiplyTile BestMultiplyTile();

}  // namespace brenu
