#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

struct HeightObs {
  double residual, adjusted, sigma, weight;
};

HeightObs ReadObs(const Job& job, const std::string& station, const std::string& target) {
  HeightObs r{};
  EXPECT_TRUE(GetHeightObsResult(job, job.Index(station), target.c_str(), &r.residual, &r.adjusted,
                                 &r.sigma, &r.weight));
  return r;
}

bool HasObs(const Job& job, int32_t station, const char* target) {
  HeightObs r{};
  return GetHeightObsResult(job, station, target, &r.residual, &r.adjusted, &r.sigma, &r.weight);
}

TEST(ApproximateHeights, RunForwardAndBackwardAlongTheObservations) {
  Job job;
  job.Add("A");
  job.Add("B");
  job.Add("C");
  job.Add("Z", 1, 0, 0, 100);
  job.Observe("B", "Z", Levelled(100, 5));   // backward: B = 95
  job.Observe("B", "C", Levelled(100, -2));  // forward: C = 93
  job.Observe("A", "C", Levelled(100, 1));   // backward, in the second pass: A = 92
  ASSERT_TRUE(ApproxCalc(job));
  const double expected[] = {92, 95, 93, 100};
  for (int32_t i = 0; i < 4; ++i) {
    PointData point{};
    ASSERT_TRUE(GetApproxResult(job, i, &point));
    EXPECT_EQ(point.h, expected[i]);
  }
  job.Add("Far");
  EXPECT_FALSE(ApproxCalc(job));
  job.Observe("Far", "A", Levelled(100, 0.0));  // a difference of zero is none
  EXPECT_FALSE(ApproxCalc(job));
  job.Observe("A", "Far", {0.0, -1.0, 1.0, -1.0});  // nor is one without a length
  EXPECT_FALSE(LeastSquareAdj(job));
}

// A loop A - B - C - A of 1, 1 and 2 km that closes with 1 + 2 - 2.994 = 6 mm.  The misclosure
// spreads in proportion to the lengths: -1.5, -1.5, -3 mm.  [pvv] = 1.5^2 + 1.5^2 + 3^2 / 2 = 9
// mm^2, over two new heights (not over the redundancy of one): sigma0 = sqrt(4.5) mm.  A line of
// a km beside a detour of b km has the cofactor a b / (a + b).
TEST(Levelling, ALoopByHand) {
  Job job;
  job.Add("A", 1, 0, 0, 100);
  job.Add("B");
  job.Add("C");
  job.Observe("A", "B", Levelled(1000, 1.0));
  job.Observe("B", "C", Levelled(1000, 2.0));
  job.Observe("C", "A", Levelled(2000, -2.994));
  ASSERT_TRUE(LeastSquareAdj(job));
  const double sigma0 = std::sqrt(4.5) / 1000;

  const VerticalResult b = ReadHeight(job, "B");
  EXPECT_NEAR(b.correction, -0.0015, 1e-12);
  EXPECT_NEAR(b.height, 100.9985, 1e-12);
  EXPECT_NEAR(b.sigma, sigma0 * std::sqrt(1.0 * 3.0 / 4.0), 1e-12);
  const VerticalResult c = ReadHeight(job, "C");
  EXPECT_NEAR(c.correction, -0.003, 1e-12);
  EXPECT_NEAR(c.height, 102.997, 1e-12);
  EXPECT_NEAR(c.sigma, sigma0 * std::sqrt(2.0 * 2.0 / 4.0), 1e-12);
  const VerticalResult a = ReadHeight(job, "A");
  EXPECT_NEAR(a.correction, 0, 1e-12);
  EXPECT_EQ(a.height, 100);
  EXPECT_NEAR(a.sigma, 0, 1e-12);

  const HeightObs bc = ReadObs(job, "B", "C");
  EXPECT_NEAR(bc.residual, -0.0015, 1e-12);
  EXPECT_NEAR(bc.adjusted, 1.9985, 1e-12);
  EXPECT_NEAR(bc.sigma, sigma0 * std::sqrt(0.75), 1e-12);
  EXPECT_EQ(bc.weight, 1.0);
  const HeightObs ca = ReadObs(job, "C", "A");
  EXPECT_NEAR(ca.residual, -0.003, 1e-12);
  EXPECT_NEAR(ca.adjusted, -2.997, 1e-12);
  EXPECT_NEAR(ca.sigma, sigma0, 1e-12);
  EXPECT_EQ(ca.weight, 0.5);
  EXPECT_FALSE(HasObs(job, 0, "C"));  // only as it was stored
  EXPECT_FALSE(HasObs(job, 0, "X"));
}

// Weights 2 and 1: the difference is (2 * 1.000 + 1.003) / 3 = 1.001.
TEST(Levelling, BothDirectionsOfALineAreTwoObservations) {
  Job job;
  job.Add("A", 1, 0, 0, 10);
  job.Add("B");
  job.Observe("A", "B", Levelled(500, 1.0));
  job.Observe("B", "A", Levelled(1000, -1.003));
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(ReadHeight(job, "B").height, 11.001, 1e-12);
  EXPECT_NEAR(ReadObs(job, "A", "B").residual, 0.001, 1e-12);
  EXPECT_NEAR(ReadObs(job, "B", "A").residual, 0.002, 1e-12);
  const double sigma0 = std::sqrt(2 * 1e-6 + 4e-6);
  EXPECT_NEAR(ReadHeight(job, "B").sigma, sigma0 / std::sqrt(3.0), 1e-12);
  EXPECT_EQ(ReadObs(job, "A", "B").weight, 2.0);
}

TEST(Levelling, WithoutNewHeightsThereIsNoUnitWeightError) {
  Job job;
  job.Add("A", 1, 0, 0, 10);
  job.Add("B", 11, 0, 0, 11);
  job.Observe("A", "B", Levelled(500, 1.5));
  SetPoint(job, 1, MakePoint("B", 1, 0, 0, 11));
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(ReadObs(job, "A", "B").residual, -0.5, 1e-12);
  EXPECT_FALSE(std::isfinite(ReadHeight(job, "A").sigma));
}

TEST(Levelling, NeedsAnObservation) {
  Job job;
  job.Add("A", 1, 0, 0, 10);
  EXPECT_FALSE(ApproxCalc(job));
  EXPECT_FALSE(LeastSquareAdj(job));
}

TEST(LevellingResults, AskingForAnIndexWithoutPointAddsAnEmptyOne) {
  Job job;
  job.Add("A", 1, 0, 0, 10);
  job.Add("B");
  job.Observe("A", "B", Levelled(500, 1.5));
  ASSERT_TRUE(LeastSquareAdj(job));
  VerticalResult height{};
  EXPECT_FALSE(GetVerticalResult(job, 7, &height));
  EXPECT_FALSE(HasObs(job, 9, "B"));
  EXPECT_EQ(GetPointCount(job), 4U);
  PointData point = MakePoint("filled", 11, 1, 2, 3);
  EXPECT_EQ(GetPoint(job, 7, &point), 7);
  EXPECT_STREQ(point.name, "");
  EXPECT_EQ(point.type, 0);
  EXPECT_EQ(point.h, 0);
  EXPECT_EQ(GetPointNum(job, ""), 7);
  EXPECT_FALSE(GetVerticalResult(job, 7, &height));
  EXPECT_EQ(GetPointCount(job), 4U);
  EXPECT_FALSE(LeastSquareAdj(job));  // nothing reaches the empty points
}

}  // namespace
}  // namespace brenu::testing
