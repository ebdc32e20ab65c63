#include "core/sparse/dense_factor.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

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

// Multiplies the factors of a panel out again and inverts the triangle.
TEST(DenseFactor, FactorsGiveThePanelBackAndInverseGivesOne) {
  DenseProduct product;
  for (const std::ptrdiff_t width : {1, 2, 15, 16, 17, 33, 70, 131}) {
    const std::ptrdiff_t height = width + 13;
    const auto at = [&](std::ptrdiff_t i, std::ptrdiff_t j) {
      return static_cast<std::size_t>(j * height + i);
    };
    std::vector<double> panel = RandomIntegers(height * width, 6);
    // Signs of the pivots do not matter.
    for (std::ptrdiff_t j = 0; j < width; ++j) panel[at(j, j)] = j % 3 == 0 ? -2000.0 : 2000.0;
    const std::vector<double> original = panel;
    ASSERT_TRUE(FactorPanel(panel.data(), height, height, width, product));
    const auto l = [&](std::ptrdiff_t i, std::ptrdiff_t j) {
      return i == j ? 1.0 : panel[at(i, j)];
    };
    for (std::ptrdiff_t j = 0; j < width; ++j) {
      for (std::ptrdiff_t i = j; i < height; ++i) {
        double sum = 0.0;
        for (std::ptrdiff_t q = 0; q <= j; ++q) sum += l(i, q) * panel[at(q, q)] * l(j, q);
        ASSERT_NEAR(sum, original[at(i, j)], 1e-10) << i << ' ' << j << " of " << width;
      }
    }

    std::vector<double> inverse(static_cast<std::size_t>(width * width), 0.0);
    std::vector<double> work(inverse.size());
    InvertUnitLower({panel.data(), 1, height}, width, inverse.data(), work.data(), product);
    for (std::ptrdiff_t j = 0; j < width; ++j) {
      for (std::ptrdiff_t i = j; i < width; ++i) {
        double sum = 0.0;
        for (std::ptrdiff_t q = j; q <= i; ++q) {
          sum += l(i, q) * inverse[static_cast<std::size_t>(j * width + q)];
        }
        ASSERT_NEAR(sum, i == j ? 1.0 : 0.0, 1e-12) << i << ' ' << j << " of " << width;
      }
    }
  }
}

}  // namespace
}  // namespace brenu::testing
