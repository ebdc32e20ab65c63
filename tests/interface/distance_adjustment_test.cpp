// Format 3: the plane network is adjusted as it stands, from distances only.
#include <gtest/gtest.h>

#include <cmath>

#include "support/job.h"

namespace brenu::testing {
namespace {

// P in the middle of four control points 100 m away in the north, east, south and west, every
// distance measured 30 mm too long: P stays and each residual is -30 mm.  N's directions only
// place P.
struct CrossJob : Job {
  CrossJob() {
    SetAdjParam(*this, Errors(2.5, 0.01));
    AddPoints(
        {{"N", 10, 100, 0}, {"E", 10, 0, 100}, {"S", 10, -100, 0}, {"W", 10, 0, -100}, {"P"}});
    ObserveAll({{"N", "S", Direction(10)}, {"N", "P", Direction(10, 100.03)}});
    for (const char* name : {"E", "S", "W"}) Observe(name, "P", Distance(100.03));
  }
  void DistancesOnly(const AdjParam& errors = Errors(2.5, 0.01)) {
    AdjParam param = errors;
    param.format = 3;
    SetAdjParam(*this, param);
  }
};

void ExpectSymmetric(const Job& job) {
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_TRUE(Near({p.x, p.y}, {0, 0}, 1e-8));
  // [pvv] = 4 * 3^2; all 6 observations count: r = 6 - 2 - 1; each axis is measured twice.
  const double error = std::sqrt(36.0 / 3.0) * 0.01 / std::sqrt(2.0);
  EXPECT_TRUE(Near({p.mx, p.my, p.e, p.f}, {error, error, error, error}, 1e-6));
  EXPECT_NEAR(Read(GetLengthResult, job, "W", "P").residual, -0.03, 1e-9);
}

TEST(DistanceAdjustment, HasOnlyTheNewPointsAsUnknowns) {
  CrossJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  job.DistancesOnly();
  // Whatever ran before, the redundancy is the same.
  for (int run = 0; run < 2; ++run) {
    ASSERT_TRUE(LeastSquareAdj(job));
    ExpectSymmetric(job);
  }
  const PlaneResult n = ReadPlane(job, "N");
  EXPECT_TRUE(Near({n.x, n.mx}, {100, 0}, 1e-9));
  const auto line = ReadLine(job, "E", "P");
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->azimuth, 270, 1e-6);
  EXPECT_NEAR(line->lengthError, ReadPlane(job, "P").my, 1e-9);
  EXPECT_NEAR(line->azimuthError, ReadPlane(job, "P").mx / 100.0 * 206264.806, 1e-3);  // across it
  EXPECT_FALSE(ReadLine(job, "N", "S"));
}

TEST(DistanceAdjustment, TakesTheNetworkAsItStands) {
  CrossJob job;
  job.DistancesOnly();
  EXPECT_FALSE(LeastSquareAdj(job));  // never built
  ASSERT_TRUE(ApproxCalc(job));
  job.Change("E", "P", Distance(70));
  job.DistancesOnly(Errors(1.0, 5.0));
  ASSERT_TRUE(LeastSquareAdj(job));
  ExpectSymmetric(job);
  EXPECT_NEAR(Read(GetLengthResult, job, "E", "P").apriori, 0.01, 1e-15);

  job.Add("Q");  // has no coordinates
  SetAdjParam(job, Errors(2.5, 0.01));
  EXPECT_FALSE(ApproxCalc(job));
  job.DistancesOnly();
  EXPECT_FALSE(LeastSquareAdj(job));
}

}  // namespace
}  // namespace brenu::testing
