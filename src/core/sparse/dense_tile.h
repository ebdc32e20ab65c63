#pragma once

#include <cstddef>
#include <vector>

namespace brenu {

// The register block of dense products: a tile of kTileRows x kTileColumns.
inline constexpr std::ptrdiff_t kTileRows = 16;
inline constexpr std::ptrdiff_t kTileColumns = 6;

// C += A B^T for one tile.  Column p of A and of B stands at a + p kTileRows and b + p
// kTileColumns; C is stored by columns that are `stride` apart.
using MultiplyTile = void (*)(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                              std::ptrdiff_t stride);

void MultiplyTileBaseline(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                          std::ptrdiff_t stride);
#ifdef BRENU_WIDE_TILES
// The same sums to the last bit.
void MultiplyTileAvx2(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                      std::ptrdiff_t stride);
void MultiplyTileAvx512(std::ptrdiff_t depth, const double* a, const double* b, double* c,
                        std::ptrdiff_t stride);
#endif

// Those that this processor can run, the widest last.
std::vector<MultiplyTile> MultiplyTiles();

}  // namespace brenu
