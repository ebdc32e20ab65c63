#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "core/sparse/dense_tile.h"

namespace brenu::testing {
namespace {

// What is made of the tiles, normal_equations_test compares with the packed matrix for panels of
// many widths.
TEST(DenseProduct, BothTilesAgree) {
  constexpr std::size_t kDepth = 40;
  std::minstd_rand random;
  std::vector<double> a(kTileRows * kDepth), b(kTileColumns * kDepth);
  for (auto* values : {&a, &b}) {  // small integers, so that products are exact
    for (double& value : *values) value = static_cast<double>(random() % 15) - 7.0;
  }
  std::vector<double> expected(kTileRows * kTileColumns, 2.0);
  std::vector<double> actual = expected;
  MultiplyTileBaseline(kDepth, a.data(), b.data(), expected.data(), kTileRows);
  BestMultiplyTile()(kDepth, a.data(), b.data(), actual.data(), kTileRows);
  EXPECT_EQ(actual, expected);
}

}  // namespace
}  // namespace brenu::testing
