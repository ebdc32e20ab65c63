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
struct LineJob : Job {
  LineJob() {
    SetAdjParam(*this, Errors(2.0, 0.001, 1e-5));
    Add("A", 10, 0, 0);
    Add("B", 10, 0, 300);
    Add("P");
    Observe("A", "B", Direction(30));
    Observe("A", "P", Direction(30, 100));
    Observe("B", "P", Distance(200.03));
  }
};

TEST(PlaneAdjustment, WeightsOfDistancesGrowWithTheirLength) {
  const LineJob job;
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
  EXPECT_NEAR(p.x, 0, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
  EXPECT_NEAR(p.my, my, 1e-9);
  EXPECT_NEAR(p.mx, mx, 1e-9);
  EXPECT_NEAR(p.mp, std::hypot(mx, my), 1e-9);
  EXPECT_NEAR(p.e, my, 1e-9);
  EXPECT_NEAR(p.f, mx, 1e-9);
  EXPECT_NEAR(p.t, 90, 1e-6);

  const ObsResult toA = Read(GetLengthResult, job, "A", "P");
  EXPECT_NEAR(toA.residual, v1, 1e-9);
  EXPECT_NEAR(toA.adjusted, y, 1e-9);
  EXPECT_NEAR(toA.apriori, s1, 1e-15);
  EXPECT_NEAR(Read(GetLengthResult, job, "B", "P").residual, v2, 1e-9);
  EXPECT_EQ(Read(GetDirAngleResult, job, "A", "P").apriori, 2.0);

  const auto line = ReadLine(job, "A", "P");
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->azimuth, 90, 1e-9);
  EXPECT_NEAR(line->azimuthError, mx / y * kRho, 1e-6);
  EXPECT_NEAR(line->length, y, 1e-9);
  EXPECT_NEAR(line->lengthError, my, 1e-9);
  EXPECT_EQ(line->relative, static_cast<int32_t>(y / my));
}

TEST(PlaneAdjustment, ControlPointsStayAndHaveNoEllipse) {
  const LineJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  const PlaneResult b = ReadPlane(job, "B");
  EXPECT_NEAR(b.x, 0, 1e-12);
  EXPECT_NEAR(b.y, 300, 1e-12);
  EXPECT_LT(b.mp, 1e-6);
  EXPECT_EQ(b.e, 0);
  EXPECT_EQ(b.f, 0);
  EXPECT_EQ(b.t, 0);
}

TEST(PlaneAdjustment, WithoutRedundancyTheErrorsAreNotFinite) {
  Job job;
  job.Add("A", 10, 0, 0);
  job.Add("B", 10, 1000, 0);
  job.Add("P");
  job.Observe("A", "B", Direction(30));
  job.Observe("A", "P", Direction(75, 100));
  ASSERT_TRUE(LeastSquareAdj(job));
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_NEAR(p.x, 50 * std::sqrt(2.0), 1e-9);
  EXPECT_FALSE(std::isfinite(p.mx));
}

// P 1 m east of A.  Directions weigh nothing here; the distance from C, 10 m south, pushes P north
// by `push`.  Linearised, that leaves P at y = 1; on the true circle around A it is at
// sqrt(1 - push^2).
PlaneResult PushedPoint(double push) {
  Job job;
  SetAdjParam(job, Errors(1e6, 0.001));
  job.Add("A", 10, 0, 0);
  job.Add("B", 10, 1000, 0);
  job.Add("C", 10, -10, 1);
  job.Add("P");
  job.Observe("A", "B", Direction(30));
  job.Observe("A", "P", Direction(120, 1));
  job.Observe("C", "P", Distance(10 + push));
  EXPECT_TRUE(LeastSquareAdj(job));
  return ReadPlane(job, "P");
}

TEST(PlaneAdjustment, StopsWhenNoCoordinateMovedByMoreThanACentimetre) {
  const PlaneResult once = PushedPoint(0.0099);
  EXPECT_NEAR(once.x, 0.0099, 1e-8);
  EXPECT_NEAR(once.y, 1.0, 1e-8);
  // The second pass takes off push^2 / 2 = 0.051 mm.
  const PlaneResult twice = PushedPoint(0.0101);
  EXPECT_NEAR(twice.x, 0.0101, 1e-6);
  EXPECT_NEAR(twice.y, std::sqrt(1 - 0.0101 * 0.0101), 1e-8);
}

// All points known: S with A in the north and B in the east, only the orientation is unknown.  It
// takes the mean, the residuals are half the difference of the two reduced observations each.
struct OrientationJob : Job {
  OrientationJob(double readingA, double readingB) {
    Add("A", 10, 1000, 0);
    Add("B", 10, 0, 1000);
    Add("S", 10, 0, 0);
    Observe("S", "A", Direction(readingA));
    Observe("S", "B", Direction(readingB));
  }
};

// Readings that miss each other by 300".  A residual of 150" is read as 1' 50".
TEST(PlaneAdjustment, ResidualsFromAHundredSecondsOnAreReadAsMinutes) {
  const OrientationJob job(10.0, 99.55);
  ASSERT_TRUE(LeastSquareAdj(job));
  const ObsResult a = Read(GetDirAngleResult, job, "S", "A");
  EXPECT_NEAR(a.residual, -150, 1e-6);
  EXPECT_NEAR(a.adjusted, 9.5810, 1e-9);  // 10 deg - 1' 50"
  const ObsResult b = Read(GetDirAngleResult, job, "S", "B");
  EXPECT_NEAR(b.residual, 150, 1e-6);
  EXPECT_NEAR(b.adjusted, 99.5650, 1e-9);  // 99 deg 55' + 1' 50"
  const OrientationJob small(10.0, 99.57);
  ASSERT_TRUE(LeastSquareAdj(small));
  EXPECT_NEAR(Read(GetDirAngleResult, small, "S", "B").adjusted, 99.5830, 1e-9);  // 90": exact
}

// Readings 4" apart on both sides of the full circle: A's azimuth minus reading is -2", taken as
// 1295998"; B's is +2".  The difference of 1295996" is not reduced by the circle.
TEST(PlaneAdjustment, AnOrientationAtTheFullCircleIsNotReduced) {
  const OrientationJob job(0.0002, 89.5958);
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(Read(GetDirAngleResult, job, "S", "A").residual, 647998, 1e-3);
  EXPECT_NEAR(Read(GetDirAngleResult, job, "S", "B").residual, -647998, 1e-3);
  // Elsewhere the same 4" are two residuals of 2".
  const OrientationJob elsewhere(10.0002, 99.5958);
  ASSERT_TRUE(LeastSquareAdj(elsewhere));
  EXPECT_NEAR(Read(GetDirAngleResult, elsewhere, "S", "A").residual, -2, 1e-6);
}

// P is 1000 m east of A by direction and distance, its azimuth observed 10" larger.  The misclosure
// enters in radians, l = -10 / rho, against coefficients in arc-seconds: of the three equations
// -z, -c dX - z, -c dX + l with c = rho / 1000 the sum of squares is least for dX = 2 l / (3 c).
TEST(PlaneAdjustment, AzimuthMisclosuresEnterInRadians) {
  Job job;
  SetAdjParam(job, Errors(2.5, 0.01));
  job.Add("A", 10, 0, 0);
  job.Add("B", 10, 1000, 0);
  job.Add("P");
  job.Observe("A", "B", Direction(20));
  job.Observe("A", "P", {1000, 110, 0, 90.0010});
  ASSERT_TRUE(LeastSquareAdj(job));
  const double c = kRho / 1000;
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_NEAR(p.x, 2.0 / 3.0 * (-10 / kRho) / c, 1e-9);
  // The residual is in arc-seconds all the same.  It makes nearly all of [pvv] with r = 1; the
  // cofactor of X is 2.5^2 / (2 c^2 - c^2 / 2).
  const ObsResult azimuth = Read(GetAzimuthResult, job, "A", "P");
  EXPECT_NEAR(azimuth.residual, -10, 1e-3);
  EXPECT_NEAR(azimuth.adjusted, 90, 1e-6);
  EXPECT_EQ(azimuth.apriori, 2.5);
  EXPECT_NEAR(p.mx, 10 / 2.5 * 2.5 / (c * std::sqrt(1.5)), 1e-5);
  EXPECT_NEAR(p.my, 10 / 2.5 * 0.01, 1e-5);
}

// P is fixed by direction and distance.  Two known directions at A that miss each other by 4", and
// a distance between known points that is 20 mm too long, give the redundancy of 2.
TEST(PlaneAdjustment, EveryKindOfObservationCounts) {
  Job job;
  SetAdjParam(job, Errors(1.0, 0.01));
  job.Add("A", 10, 0, 0);
  job.Add("B", 10, 1000, 0);
  job.Add("C", 10, 0, 1000);
  job.Add("P");
  job.Observe("A", "B", Direction(10));
  job.Observe("A", "C", Direction(99.5956));  // 4" short of 100 degrees
  job.Observe("A", "P", Direction(55, 100));
  job.Observe("B", "C", Distance(1000 * std::sqrt(2.0) + 0.02));
  ASSERT_TRUE(LeastSquareAdj(job));
  // [pvv] = 2^2 + 2^2 + (20 mm / 10 mm)^2 = 12; 3 directions + 2 distances - 2 - 1 = 2.
  const double m0 = std::sqrt(12.0 / 2.0);
  const auto line = ReadLine(job, "A", "P");
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->lengthError, m0 * 0.01, 1e-9);
  EXPECT_NEAR(line->azimuthError, m0 * std::sqrt(1.5),
              1e-6);  // its own reading and the mean of two
  EXPECT_EQ(line->relative, static_cast<int32_t>(100 / line->lengthError));
}

TEST(PlaneAdjustment, FailsOnAnObservationOfANameWithoutPoint) {
  const LineJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  // The renaming is refused, because A is a station: B's distance keeps a name that no point has.
  EXPECT_EQ(SetPoint(job, 1, MakePoint("A", 10, 0, 300)), -1);
  EXPECT_FALSE(LeastSquareAdj(job));
}

TEST(PlaneResults, AreRefusedWithoutTouchingTheOutputs) {
  const LineJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  double d = 77;
  int32_t n = 77;
  PlaneResult plane = {77, 77, 77, 77, 77, 77, 77, 77};
  const auto line = [&](int32_t station, const char* target) {
    return GetAzAndLenPrecision(job, station, target, &d, &d, &d, &d, &n);
  };
  EXPECT_FALSE(line(0, "B"));  // two control points
  EXPECT_FALSE(line(0, "X"));
  EXPECT_FALSE(line(2, "A"));  // P is no station
  EXPECT_FALSE(line(8, "A"));
  EXPECT_FALSE(GetPlaneResult(job, 8, &plane));
  EXPECT_FALSE(GetDirAngleResult(job, 1, "P", &d, &d, &d));  // only a distance
  EXPECT_FALSE(GetLengthResult(job, 0, "B", &d, &d, &d));    // only a direction
  EXPECT_FALSE(GetAzimuthResult(job, 0, "P", &d, &d, &d));
  EXPECT_EQ(GetPointCount(job), 3U);

  // As a levelling network the job has no plane results any more.
  SetPoint(job, 0, MakePoint("A", 1));
  SetPoint(job, 1, MakePoint("B", 1));
  ApproxCalc(job);
  EXPECT_FALSE(GetPlaneResult(job, 2, &plane));
  EXPECT_FALSE(GetLengthResult(job, 0, "P", &d, &d, &d));
  EXPECT_FALSE(line(0, "P"));
  EXPECT_EQ(d, 77);
  EXPECT_EQ(n, 77);
  EXPECT_EQ(plane.x, 77);
}

}  // namespace
}  // namespace brenu::testing
