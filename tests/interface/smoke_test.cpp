#include <gtest/gtest.h>

#include "support/job.h"

namespace brenu::testing {
namespace {

TEST(Parameters, FreshContextHoldsTheDefaults) {
  const Job job;
  const AdjParam p = GetAdjParam(job);
  EXPECT_EQ(p.MO, 2.5);
  EXPECT_EQ(p.Lvl1Limit, 20);
  EXPECT_EQ(GetAdjParam(nullptr).MO, 0.0);
}

}  // namespace
}  // namespace brenu::testing
