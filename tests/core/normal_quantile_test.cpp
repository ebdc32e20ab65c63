#include "core/normal_quantile.h"

#include <gtest/gtest.h>

namespace brenu {
namespace {

// Quantiles from printed tables of the normal distribution; beyond 5 it is cut off.
TEST(NormalQuantile, PublishedValuesAndCutOffs) {
  const struct {
    double p, z;
  } table[] = {{0.5, 0.0},          {0.75, 0.6744898},   {0.9, 1.2815516},    {0.95, 1.6448536},
               {0.975, 1.9599640},  {0.99, 2.3263479},   {0.995, 2.5758293},  {0.999, 3.0902323},
               {0.9995, 3.2905267}, {0.9999, 3.7190165}, {0.99999, 4.2648908}};
  for (const auto& entry : table) {
    EXPECT_NEAR(NormalQuantile(entry.p), entry.z, 1e-6) << entry.p;
    EXPECT_NEAR(NormalQuantile(1.0 - entry.p), -entry.z, 1e-6) << entry.p;
  }
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
