#include "core/sparse/dense_product.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "core/sparse/dense_tile.h"

namespace brenu::testing {
namespace {

// A square by columns, and small integers in it, so that products are exact.
std::vector<double> RandomIntegers(std::ptrdiff_t count, std::uint32_t seed) {
  std::minstd_rand random(seed);
  std::vector<double> values;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    values.push_back(static_cast<double>(random() % 15) - 7.0);
  }
  return values;
}

double Element(const MatrixView& m, std::ptrdiff_t i, std::ptrdiff_t p) {
  return m.data[i * m.rowStride + p * m.columnStride];
}

// What is made of such products, factors and inverses of panels, normal_equations_test compares
// with the packed matrix for panels of many widths.
TEST(DenseProduct, AgreesWithTheDefinitionAcrossAllEdges) {
  DenseProduct multiplier;
  struct Size {
    std::ptrdiff_t rows, columns, depth;
  };
  // Below, at and above the tiles and the cache blocks.
  for (const Size& n :
       {Size{1, 1, 1}, Size{8, 4, 5}, Size{9, 5, 0}, Size{7, 3, 300}, Size{31, 33, 2},
        Size{130, 17, 257}, Size{20, 1030, 3}, Size{1040, 1033, 1}}) {
    const auto a = RandomIntegers(n.rows * n.depth, 1);
    const auto b = RandomIntegers(n.columns * n.depth, 2);
    const auto scale = RandomIntegers(n.depth, 3);
    for (const bool transposed : {false, true}) {
      const MatrixView av =
          transposed ? MatrixView{a.data(), n.depth, 1} : MatrixView{a.data(), 1, n.rows};
      const MatrixView bv =
          transposed ? MatrixView{b.data(), n.depth, 1} : MatrixView{b.data(), 1, n.columns};
      for (const auto part : {DenseProduct::Part::kWhole, DenseProduct::Part::kLower}) {
        std::vector<double> c(static_cast<std::size_t>((n.rows + 2) * n.columns), 1.0);
        multiplier.Add({av, bv, scale.data(), -1.0, n.rows, n.columns, n.depth}, c.data(),
                       n.rows + 2, part);
        int wrong = 0;
        for (std::ptrdiff_t j = 0; j < n.columns; ++j) {
          const double* column = c.data() + j * (n.rows + 2);
          for (std::ptrdiff_t i = part == DenseProduct::Part::kLower ? j : 0; i < n.rows; ++i) {
            double expected = 1.0;
            for (std::ptrdiff_t p = 0; p < n.depth; ++p) {
              expected -=
                  Element(av, i, p) * scale[static_cast<std::size_t>(p)] * Element(bv, j, p);
            }
            wrong += column[i] == expected ? 0 : 1;
          }
          wrong += column[n.rows] == 1.0 && column[n.rows + 1] == 1.0 ? 0 : 1;  // not its own
        }
        EXPECT_EQ(wrong, 0) << n.rows << " x " << n.columns << " x " << n.depth;
      }
    }
  }
}

TEST(DenseProduct, BothTilesAgree) {
  const auto a = RandomIntegers(kTileRows * 40, 4);
  const auto b = RandomIntegers(kTileColumns * 40, 5);
  std::vector<double> expected(kTileRows * kTileColumns, 2.0);
  std::vector<double> actual = expected;
  MultiplyTileBaseline(40, a.data(), b.data(), expected.data(), kTileRows);
  BestMultiplyTile()(40, a.data(), b.data(), actual.data(), kTileRows);
  EXPECT_EQ(actual, expected);
}

}  // namespace
}  // namespace brenu::testing
