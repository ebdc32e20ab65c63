#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "core/normal_equations.h"
#include "core/normal_quantile.h"
#include "core/packed_matrix.h"
#include "support/random.h"

namespace brenu {
namespace {

using Packed = std::vector<double>;  // columns of the upper triangle

TEST(InvertPacked, AVanishingPivotIsSingularByAnAbsoluteTest) {
  Packed zeroFirst = {0, 1, 0};  // regular, but there is no pivoting
  EXPECT_FALSE(InvertPacked(zeroFirst, 2));
  Packed dependent = {1, 1, 1};
  EXPECT_FALSE(InvertPacked(dependent, 2));
  Packed tiny = {1e-16};
  EXPECT_FALSE(InvertPacked(tiny, 1));
  Packed small = {1e-15};
  EXPECT_TRUE(InvertPacked(small, 1));
}

TEST(InvertPacked, RandomMatrixTimesItsInverseIsTheIdentity) {
  constexpr std::size_t kOrder = 40;
  testing::Random random(1);
  Packed matrix(PackedSize(kOrder));
  for (double& element : matrix) element = random.Uniform(-1, 1);
  // Diagonally dominant, every third row with a negative sign.
  for (std::size_t i = 0; i < kOrder; ++i) matrix[PackedIndex(i, i)] = i % 3 == 0 ? -45 : 45;
  Packed inverse = matrix;
  ASSERT_TRUE(InvertPacked(inverse, kOrder));
  for (std::size_t r = 0; r < kOrder; ++r) {
    for (std::size_t c = 0; c < kOrder; ++c) {
      double sum = 0.0;
      for (std::size_t k = 0; k < kOrder; ++k) {
        sum += matrix[PackedIndex(r, k)] * inverse[PackedIndex(k, c)];
      }
      EXPECT_NEAR(sum, r == c ? 1.0 : 0.0, 1e-13) << r << ", " << c;
    }
  }
}

// Two measurements of x, one of y - x: x = mean, y = x + difference.
TEST(NormalEquations, SolveAndPropagate) {
  NormalEquations normal;
  normal.SetPattern(PointPattern(1, 2));
  normal.Reset();
  const Term x[] = {{0, 1.0}};
  const Term difference[] = {{1, 1.0}, {0, -1.0}};
  normal.Add(x, 1.0, -10.0);
  normal.Add(x, 3.0, -14.0);
  normal.Add(difference, 2.0, -5.0);
  normal.Add({}, 7.0, 7.0);  // an equation without terms says nothing
  ASSERT_TRUE(normal.Solve());
  EXPECT_NEAR(normal.Solution()[0], 13.0, 1e-13);  // (10 + 3 * 14) / 4
  EXPECT_NEAR(normal.Solution()[1], 18.0, 1e-13);
  // Q: var x = 1/4, var y = 1/4 + 1/2, cov = 1/4; either triangle may be asked for.
  EXPECT_NEAR(normal.Cofactor(0, 1), 0.25, 1e-15);
  EXPECT_EQ(normal.Cofactor(0, 1), normal.Cofactor(1, 0));
  EXPECT_NEAR(normal.QuadraticForm(difference), 0.5, 1e-15);
  const Term sum[] = {{0, 1.0}, {1, 1.0}};
  EXPECT_NEAR(normal.QuadraticForm(sum), 0.25 + 0.75 + 2 * 0.25, 1e-15);
}

TEST(NormalEquations, HoldingAddsToTheDiagonalAndReplacingDoesNot) {
  const Term x[] = {{0, 1.0}};
  NormalEquations normal;
  normal.SetPattern(PointPattern(1, 1));
  normal.Reset();
  normal.Add(x, 3.0, -1.0);
  normal.Hold(0, 1.0);
  ASSERT_TRUE(normal.Solve());
  EXPECT_EQ(normal.Cofactor(0, 0), 0.25);
  normal.Reset();
  EXPECT_FALSE(normal.IsSolved());
  normal.Add(x, 3.0, -1.0);
  normal.ReplaceDiagonal(0, 8.0);
  ASSERT_TRUE(normal.Solve());
  EXPECT_EQ(normal.Cofactor(0, 0), 0.125);
  normal.Reset();
  EXPECT_FALSE(normal.Solve());
  EXPECT_FALSE(normal.IsSolved());
}

// Quantiles from printed tables of the normal distribution.
TEST(NormalQuantile, PublishedValues) {
  const struct {
    double p, z;
  } table[] = {{0.75, 0.6744898},   {0.9, 1.2815516},    {0.95, 1.6448536},  {0.975, 1.9599640},
               {0.99, 2.3263479},   {0.995, 2.5758293},  {0.999, 3.0902323}, {0.9995, 3.2905267},
               {0.9999, 3.7190165}, {0.99999, 4.2648908}};
  for (const auto& entry : table) {
    EXPECT_NEAR(NormalQuantile(entry.p), entry.z, 1e-6) << entry.p;
    EXPECT_NEAR(NormalQuantile(1.0 - entry.p), -entry.z, 1e-6) << entry.p;
  }
}

TEST(NormalQuantile, MiddleAndCutOffs) {
  EXPECT_EQ(NormalQuantile(0.5), 0.0);
  EXPECT_EQ(NormalQuantile(0.99999971), 5.0);
  EXPECT_LT(NormalQuantile(0.99999969), 5.0);
  EXPECT_EQ(NormalQuantile(2e-7), -5.0);
  EXPECT_GT(NormalQuantile(3.1e-7), -5.0);
  EXPECT_EQ(NormalQuantile(0.0), -5.0);
  EXPECT_EQ(NormalQuantile(1.0), 5.0);
}

}  // namespace
}  // namespace brenu
