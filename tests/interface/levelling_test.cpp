#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

TEST(ApproximateHeights, RunForwardAndBackwardAlongTheObservations) {
  Job job({{"A"}, {"B"}, {"C"}, {"D"}, {"Z", 1, 0, 0, 100}});
  EXPECT_FALSE(LeastSquareAdj(job));  // no observation
  // Backward B = 95 and C = 90; in the second pass backward A = 89 and forward D = 88.  B, known in
  // the second pass only, comes too late for C.
  job.ObserveAll({{"A", {{"C", Levelled(100, 1)}}},
                  {"B", {{"C", Levelled(100, -2)}, {"Z", Levelled(100, 5)}}},
                  {"C", {{"Z", Levelled(100, 10)}, {"D", Levelled(100, -2)}}}});
  ASSERT_TRUE(ApproxCalc(job));
  const auto h = [&](const char* name) { return ReadApproximate(job, name).h; };
  EXPECT_TRUE(Near({h("A"), h("B"), h("C"), h("D")}, {89, 95, 90, 88}, 0));
  job.Add("Far");
  job.Observe("Far", "A", Levelled(100, 0.0));      // a difference of zero is none,
  job.Observe("A", "Far", {0.0, -1.0, 1.0, -1.0});  // nor is one without a length
  EXPECT_FALSE(ApproxCalc(job));
  EXPECT_FALSE(LeastSquareAdj(job));
}

// A loop A - B - C - A of 1, 1 and 2 km that closes with 1 + 2 - 2.994 = 6 mm.  The misclosure
// spreads in proportion to the lengths: -1.5, -1.5, -3 mm.  [pvv] = 1.5^2 + 1.5^2 + 3^2 / 2 = 9
// mm^2, over two new heights (not over the redundancy of one): sigma0 = sqrt(4.5) mm.  A line of
// a km beside a detour of b km has the cofactor a b / (a + b).
TEST(Levelling, ALoopByHand) {
  const Job job({{"A", 1, 0, 0, 100}, {"B"}, {"C"}}, {{"A", {{"B", Levelled(1000, 1.0)}}},
                                                      {"B", {{"C", Levelled(1000, 2.0)}}},
                                                      {"C", {{"A", Levelled(2000, -2.994)}}}});
  ASSERT_TRUE(LeastSquareAdj(job));
  const double sigma0 = std::sqrt(4.5) / 1000;
  const auto expectPoint = [&](const char* name, double correction, double height, double sigma) {
    const VerticalResult r = ReadHeight(job, name);
    EXPECT_TRUE(
        Near({r.correction, r.height, r.sigma}, {correction, height, sigma0 * sigma}, 1e-12));
  };
  expectPoint("A", 0, 100, 0);
  expectPoint("B", -0.0015, 100.9985, std::sqrt(1.0 * 3.0 / 4.0));
  expectPoint("C", -0.003, 102.997, std::sqrt(2.0 * 2.0 / 4.0));
  const HeightObs bc = ReadHeightObs(job, "B", "C").value();
  EXPECT_TRUE(Near({bc.residual, bc.adjusted, bc.sigma, bc.weight},
                   {-0.0015, 1.9985, sigma0 * std::sqrt(0.75), 1}, 1e-12));
  const HeightObs ca = ReadHeightObs(job, "C", "A").value();
  EXPECT_TRUE(
      Near({ca.residual, ca.adjusted, ca.sigma, ca.weight}, {-0.003, -2.997, sigma0, 0.5}, 1e-12));
  EXPECT_FALSE(ReadHeightObs(job, "A", "C"));  // only as it was stored
  EXPECT_FALSE(ReadHeightObs(job, "A", "X"));
}

TEST(Levelling, WithoutNewHeightsThereIsNoStandardErrorOfUnitWeight) {
  const Job job({{"A", 1, 0, 0, 10}, {"B", 1, 0, 0, 11.5}},
                {{"A", {{"B", Levelled(500, 1.0)}}}, {"B", {{"A", Levelled(1000, -1.003)}}}});
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(ReadHeightObs(job, "A", "B")->residual, 0.5, 1e-12);
  EXPECT_NEAR(ReadHeightObs(job, "B", "A")->residual, -0.497, 1e-12);
  EXPECT_FALSE(std::isfinite(ReadHeight(job, "A").sigma));
}

TEST(Levelling, FailsWhenWeightsCancelAndForANameWithoutPoint) {
  const Job cancelling({{"A", 1, 0, 0, 10}, {"P"}},
                       {{"A", {{"P", Levelled(1000, 1)}}}, {"P", {{"A", Levelled(-1000, -1)}}}});
  EXPECT_FALSE(LeastSquareAdj(cancelling));
  const Job renamed({{"A", 1, 0, 0, 10}, {"B", 1, 0, 0, 12}, {"P"}},
                    {{"A", {{"P", Levelled(1000, 1)}}}, {"B", {{"P", Levelled(1000, -1)}}}});
  EXPECT_EQ(SetPoint(renamed, 1, MakePoint("A", 1, 0, 0, 12)), -1);
  EXPECT_FALSE(LeastSquareAdj(renamed));
}

TEST(LevellingResults, AskingForAnIndexWithoutPointAddsAnEmptyOne) {
  const Job job({{"A", 1, 0, 0, 10}, {"B"}}, {{"A", {{"B", Levelled(500, 1.5)}}}});
  ASSERT_TRUE(LeastSquareAdj(job));
  VerticalResult height{};
  double d = 0;
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_FALSE(GetVerticalResult(job, 7, &height));
    EXPECT_FALSE(GetHeightObsResult(job, 9, "B", &d, &d, &d, &d));
    EXPECT_EQ(GetPointCount(job), 4U);
  }
  PointData point = MakePoint("filled", 11, 1, 2, 3);
  EXPECT_EQ(GetPoint(job, 7, &point), 7);
  EXPECT_EQ(Bytes(point), Bytes(PointData{}));
  EXPECT_EQ(GetPointNum(job, ""), 7);
  EXPECT_FALSE(LeastSquareAdj(job));  // nothing reaches the empty points
}

}  // namespace
}  // namespace brenu::testing
