#include "core/sparse/dense_product.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "core/sparse/dense_tile.h"

namespace brenu::testing {
namespace {

// Small ones, so that products are exact.
std::vector<double> RandomIntegers(std::ptrdiff_t count, std::uint32_t seed) {
  std::minstd_rand random(seed);
  std::vector<double> values(static_cast<std::size_t>(count));
  for (double& value : values) value = static_cast<double>(random() % 15) - 7.0;
  return values;
}

// Beyond the cache blocks in each direction.  For smaller panels of many widths
// normal_equations_test compares what is made of such products with the packed matrix.
TEST(DenseProduct, AgreesWithTheDefinitionAcrossItsBlocks) {
  DenseProduct product;
  using Size = std::array<std::ptrdiff_t, 3>;
  for (const auto& [rows, columns, depth] : {Size{130, 17, 300}, Size{1040, 1033, 2}}) {
    const auto a = RandomIntegers(rows * depth, 1);
    const auto b = RandomIntegers(columns * depth, 2);
    const auto scale = RandomIntegers(depth, 3);
    for (const bool transposed : {false, true}) {
      const MatrixView av{a.data(), transposed ? depth : 1, transposed ? 1 : rows};
      const MatrixView bv{b.data(), transposed ? depth : 1, transposed ? 1 : columns};
      std::vector<double> c(static_cast<std::size_t>(rows * columns), 1.0);
      product.Add({av, bv, scale.data(), -1.0, rows, columns, depth}, c.data(), rows,
                  DenseProduct::Part::kWhole);
      int wrong = 0;
      for (std::ptrdiff_t k = 0; k < rows * columns; ++k) {
        double expected = 1.0;
        for (std::ptrdiff_t p = 0; p < depth; ++p) {
          expected -= av.data[k % rows * av.rowStride + p * av.columnStride] *
                      bv.data[k / rows * bv.rowStride + p * bv.columnStride] *
                      scale[static_cast<std::size_t>(p)];
        }
        wrong += c[static_cast<std::size_t>(k)] == expected ? 0 : 1;
      }
      EXPECT_EQ(wrong, 0) << rows << " x " << columns << " x " << depth;
    }
  }
}

TEST(DenseProduct, EveryTileAgreesWithTheDefinition) {
  constexpr std::ptrdiff_t kDepth = 40;
  const auto a = RandomIntegers(kTileRows * kDepth, 4);
  const auto b = RandomIntegers(kTileColumns * kDepth, 5);
  std::vector<double> expected;
  for (std::ptrdiff_t k = 0; k < kTileRows * kTileColumns; ++k) {
    double& sum = expected.emplace_back(2.0);
    for (std::ptrdiff_t p = 0; p < kDepth; ++p) {
      sum += a[static_cast<std::size_t>(p * kTileRows + k % kTileRows)] *
             b[static_cast<std::size_t>(p * kTileColumns + k / kTileRows)];
    }
  }
  for (const MultiplyTile multiply : MultiplyTiles()) {
    std::vector<double> actual(expected.size(), 2.0);
    multiply(kDepth, a.data(), b.data(), actual.data(), kTileRows);
    EXPECT_EQ(actual, expected);
  }
}

}  // namespace
}  // namespace brenu::testing
