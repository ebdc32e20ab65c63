// Quantiles against printed tables, to their last digit.
#include "core/distributions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace brenu {
namespace {

struct Row {
  double computed, printed, digit;
};

TEST(Distributions, AgreeWithPrintedTables) {
  // M. Abramowitz, I. A. Stegun, Handbook of mathematical functions, tables 26.1, 26.8 - 26.10; tau
  // from A. J. Pope, The statistics of residuals and the detection of outliers, two-sided 5 %.
  const Row rows[] = {{StandardNormalQuantile(0.975), 1.95996, 1e-5},
                      {StandardNormalQuantile(0.9995), 3.29053, 1e-5},
                      {StandardNormalQuantile(0.001), -3.09023, 1e-5},
                      {ChiSquareQuantile(0.95, 1), 3.84146, 1e-5},
                      {ChiSquareQuantile(0.975, 4), 11.1433, 1e-4},
                      {ChiSquareQuantile(0.025, 4), 0.484419, 1e-6},
                      {ChiSquareQuantile(0.95, 100), 124.342, 1e-3},
                      {StudentQuantile(0.975, 1), 12.706, 1e-3},
                      {StudentQuantile(0.995, 4), 4.604, 1e-3},
                      {StudentQuantile(0.05, 10), -1.812, 1e-3},
                      {FQuantile(0.95, 3, 10), 3.71, 1e-2},
                      {FQuantile(0.99, 1, 5), 16.26, 1e-2},
                      {FQuantile(0.975, 20, 2), 39.45, 1e-2},
                      {TauQuantile(0.975, 2), 1.410, 1e-3},
                      {TauQuantile(0.975, 3), 1.645, 1e-3},
                      {TauQuantile(0.975, 10), 1.904, 1e-3}};
  for (const Row& row : rows) EXPECT_NEAR(row.computed, row.printed, 0.51 * row.digit);
  EXPECT_TRUE(std::isnan(TauQuantile(0.975, 1)));
  EXPECT_TRUE(std::isnan(ChiSquareQuantile(0.95, 0)));
  EXPECT_TRUE(std::isnan(StudentQuantile(1.0, 5)));
}

}  // namespace
}  // namespace brenu
