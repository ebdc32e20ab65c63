// Differences of two adjustments, computed by hand.
#include "report/comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace brenu {
namespace {

using ::testing::ElementsAre;

PlanePointRow PlanePoint(const char* name, double x, double y, EllipseRow ellipse) {
  return {name, false, x, y, 0.0, 0.0, 0.0, ellipse};
}

PlaneReport Plane(double m0, std::vector<PlanePointRow> points) {
  PlaneReport plane{};
  plane.m0 = m0;
  plane.m0Apriori = 1.0;
  plane.redundancy = 4;
  plane.isScaled = true;
  plane.points = std::move(points);
  return plane;
}

// s0^2 = (4 * 1 + 4 * 4) / 8 = 2.5.  Of P the cofactors are diag(4, 1) + diag(4, 16) / 4 = 5 both,
// in 1e-6; of Q those of an ellipse of 2 and 1 mm at 45 degrees.  F(2, 8) = 4 (0.05^(-1/4) - 1).
TEST(Comparison, PlanePointsAreTestedByBothCovariances) {
  const EllipseRow upright = {0.002, 0.001, 0.0, 0.0, 0.0};
  const EllipseRow lying = {0.004, 0.002, 90.0, 0.0, 0.0};
  const EllipseRow slanting = {0.002, 0.001, 45.0, 0.0, 0.0};
  PlanePointRow fixed = PlanePoint("Q", 0.002, -0.002, {});
  fixed.control = true;
  Report a, b;
  a.plane = Plane(1.0, {PlanePoint("P", 10.0, 20.0, upright), PlanePoint("Q", 0.0, 0.0, slanting),
                        PlanePoint("old", 1.0, 1.0, upright)});
  b.plane = Plane(
      2.0, {PlanePoint("P", 10.01, 20.01, lying), fixed, PlanePoint("new", 1.0, 1.0, upright)});
  const Comparison found = Compare(a, b);
  ASSERT_EQ(found.plane.size(), 2U);
  EXPECT_NEAR(found.plane[0].test, (1e-4 + 1e-4) / 5e-6 / (2.0 * 2.5), 1e-6);
  EXPECT_NEAR(found.plane[0].critical, 4.0 * (std::pow(0.05, -0.25) - 1.0), 1e-8);
  EXPECT_TRUE(found.plane[0].significant);
  // Across the ellipse: 8 / 1.
  EXPECT_NEAR(found.plane[1].test, 8e-6 / 1e-6 / (2.0 * 2.5), 1e-6);
  EXPECT_FALSE(found.plane[1].significant);
  EXPECT_THAT(found.onlyFirst, ElementsAre("old"));
  EXPECT_THAT(found.onlySecond, ElementsAre("new"));
}

// Without redundancy by the normal distribution: 3 and 4 mm make 5.
TEST(Comparison, HeightsWithoutRedundancyAreTestedWithAprioriErrors) {
  HeightsReport heights{};
  heights.m0Apriori = 0.002;
  heights.points = {{"P", false, 1.0, 0.003, 0.0, {}}, {"B", true, 5.0, 0.0, 0.0, {}}};
  Report a, b;
  a.heights = heights;
  heights.points[0].h = 1.01;
  heights.points[0].mh = 0.004;
  b.heights = heights;
  const Comparison found = Compare(a, b);
  ASSERT_EQ(found.heights.size(), 2U);
  EXPECT_NEAR(found.heights[0].test, 2.0, 1e-9);
  EXPECT_NEAR(found.heights[0].critical, 1.959964, 1e-6);
  EXPECT_TRUE(found.heights[0].significant);
  EXPECT_TRUE(std::isnan(found.heights[1].test));  // a bench mark in both
}

}  // namespace
}  // namespace brenu
