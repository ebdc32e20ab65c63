// Plane networks small enough to be solved by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

constexpr double kRho = 206264.80624709636;

// P lies east of A, on the line from A to B, 300 m away: measured 100.00 m from A and 200.03 m from
// B, 30 mm too much.  A's two directions fix P across the line.
TEST(PlaneAdjustment, WeightsOfDistancesGrowWithTheirLength) {
  const Job job(
      {{"A", 10, 0, 0}, {"B", 10, 0, 300}, {"P"}},
      {{"A", {{"B", Direction(30)}, {"P", Direction(30, 100)}}}, {"B", {{"P", Distance(200.03)}}}},
      Errors(2.0, 0.001, 1e-5));
  ASSERT_TRUE(LeastSquareAdj(job));
  const double s1 = 0.001 + 1e-5 * 100;
  const double s2 = 0.001 + 1e-5 * 200.03;
  const double p1 = 1 / (s1 * s1);
  const double p2 = 1 / (s2 * s2);
  const double y = (p1 * 100 + p2 * 99.97) / (p1 + p2);
  const double v1 = y - 100;
  const double v2 = 99.97 - y;
  // B is a station without directions and has no orientation: 4 observations, 3 unknowns.
  const double m0 = std::sqrt(p1 * v1 * v1 + p2 * v2 * v2);
  const double my = m0 / std::sqrt(p1 + p2);
  // Both readings of A weigh the same, so that the azimuth of P has twice the variance of one.  The
  // cofactors are those of the only pass, at 100 m; the correction is below its limit.
  const double mx = m0 * 2.0 * std::sqrt(2.0) / kRho * 100;

  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_TRUE(Near({p.x, p.y, p.mx, p.my, p.mp, p.e, p.f},
                   {0, y, mx, my, std::hypot(mx, my), my, mx}, 1e-9));
  EXPECT_NEAR(p.t, 90, 1e-6);
  const ObsResult toA = Read(GetLengthResult, job, "A", "P");
  EXPECT_TRUE(Near({toA.residual, toA.adjusted, toA.apriori}, {v1, y, s1}, 1e-9));
  EXPECT_NEAR(Read(GetLengthResult, job, "B", "P").residual, v2, 1e-9);
  EXPECT_EQ(Read(GetDirAngleResult, job, "A", "P").apriori, 2.0);
  const LineResult line = ReadLine(job, "A", "P").value();
  EXPECT_TRUE(Near({line.azimuth, line.length, line.lengthError}, {90, y, my}, 1e-9));
  EXPECT_NEAR(line.azimuthError, mx / y * kRho, 1e-6);
  EXPECT_EQ(line.relative, static_cast<int32_t>(y / my));

  // Control points stay and have no ellipse.
  const PlaneResult b = ReadPlane(job, "B");
  EXPECT_TRUE(Near({b.x, b.y, b.e, b.f, b.t}, {0, 300, 0, 0, 0}, 1e-12));
  EXPECT_LT(b.mp, 1e-6);

  // The renaming is refused, because A is a station: B's distance keeps a name that no point has.
  EXPECT_EQ(SetPoint(job, 1, MakePoint("A", 10, 0, 300)), -1);
  EXPECT_FALSE(LeastSquareAdj(job));
}

// P 1 m east of A.  Directions weigh nothing here; the distance from C, 10 m south, pushes P north
// by `push`.  Linearised, that leaves P at y = 1; on the true circle around A it is at
// sqrt(1 - push^2).
PlaneResult PushedPoint(double push) {
  const Job job({{"A", 10, 0, 0}, {"B", 10, 1000, 0}, {"C", 10, -10, 1}, {"P"}},
                {{"A", {{"B", Direction(30)}, {"P", Direction(120, 1)}}},
                 {"C", {{"P", Distance(10 + push)}}}},
                Errors(1e6, 0.001));
  EXPECT_TRUE(LeastSquareAdj(job));
  return ReadPlane(job, "P");
}

TEST(PlaneAdjustment, StopsWhenNoCoordinateMovedByMoreThanACentimetre) {
  const PlaneResult once = PushedPoint(0.0099);
  EXPECT_TRUE(Near({once.x, once.y}, {0.0099, 1.0}, 1e-8));
  // The second pass takes off push^2 / 2 = 0.051 mm.
  const PlaneResult twice = PushedPoint(0.0101);
  EXPECT_NEAR(twice.x, 0.0101, 1e-6);
  EXPECT_NEAR(twice.y, std::sqrt(1 - 0.0101 * 0.0101), 1e-8);
}

// All points known: S with A in the north and B in the east, only the orientation is unknown.  It
// takes the mean, the residuals are half the difference of the two reduced observations each.
struct OrientationJob : Job {
  OrientationJob(double readingA, double readingB)
      : Job({{"A", 10, 1000, 0}, {"B", 10, 0, 1000}, {"S", 10, 0, 0}},
            {{"S", {{"A", Direction(readingA)}, {"B", Direction(readingB)}}}}) {
    EXPECT_TRUE(LeastSquareAdj(*this));
  }
  ObsResult Of(const char* target) const { return Read(GetDirAngleResult, *this, "S", target); }
};

// Readings that miss each other by 300".  A residual of 150" is read as 1' 50".
TEST(PlaneAdjustment, ResidualsFromAHundredSecondsOnAreReadAsMinutes) {
  const OrientationJob job(10.0, 99.55);
  EXPECT_TRUE(Near({job.Of("A").residual, job.Of("B").residual}, {-150, 150}, 1e-6));
  EXPECT_TRUE(Near({job.Of("A").adjusted, job.Of("B").adjusted}, {9.5810, 99.5650}, 1e-9));
  EXPECT_NEAR(OrientationJob(10.0, 99.57).Of("B").adjusted, 99.5830, 1e-9);  // 90": exact
}

// Readings 4" apart on both sides of the full circle: A's azimuth minus reading is -2", taken as
// 1295998"; B's is +2".  The difference of 1295996" is not reduced by the circle.
TEST(PlaneAdjustment, AnOrientationAtTheFullCircleIsNotReduced) {
  const OrientationJob job(0.0002, 89.5958);
  EXPECT_TRUE(Near({job.Of("A").residual, job.Of("B").residual}, {647998, -647998}, 1e-3));
  // Elsewhere the same 4" are two residuals of 2".
  EXPECT_NEAR(OrientationJob(10.0002, 99.5958).Of("A").residual, -2, 1e-6);
}

// P is 1000 m east of A by direction and distance, its azimuth observed 10" larger.  The misclosure
// enters in radians, l = -10 / rho, against coefficients in arc-seconds: of the three equations
// -z, -c dX - z, -c dX + l with c = rho / 1000 the sum of squares is least for dX = 2 l / (3 c).
TEST(PlaneAdjustment, AzimuthMisclosuresEnterInRadians) {
  const Job job({{"A", 10, 0, 0}, {"B", 10, 1000, 0}, {"P"}},
                {{"A", {{"B", Direction(20)}, {"P", {1000, 110, 0, 90.0010}}}}}, Errors(2.5, 0.01));
  ASSERT_TRUE(LeastSquareAdj(job));
  const double c = kRho / 1000;
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_NEAR(p.x, 2.0 / 3.0 * (-10 / kRho) / c, 1e-9);
  // The residual is in arc-seconds all the same.  It makes nearly all of [pvv] with r = 1; the
  // cofactor of X is 2.5^2 / (2 c^2 - c^2 / 2).
  const ObsResult azimuth = Read(GetAzimuthResult, job, "A", "P");
  EXPECT_TRUE(Near({azimuth.residual, azimuth.adjusted, azimuth.apriori}, {-10, 90, 2.5}, 1e-3));
  EXPECT_TRUE(Near({p.mx, p.my}, {10 / (c * std::sqrt(1.5)), 10 / 2.5 * 0.01}, 1e-5));
}

}  // namespace
}  // namespace brenu::testing
