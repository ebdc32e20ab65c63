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
    Add("N", 10, 100, 0);
    Add("E", 10, 0, 100);
    Add("S", 10, -100, 0);
    Add("W", 10, 0, -100);
    Add("P");
    Observe("N", "S", Direction(10));
    Observe("N", "P", Direction(10, 100.03));
    for (const char* name : {"E", "S", "W"}) Observe(name, "P", Distance(100.03));
  }
  void SetFormat(int32_t format) {
    AdjParam param = GetAdjParam(*this);
    param.format = format;
    SetAdjParam(*this, param);
  }
};

void ExpectSymmetric(const Job& job) {
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_NEAR(p.x, 0, 1e-8);
  EXPECT_NEAR(p.y, 0, 1e-8);
  // [pvv] = 4 * 3^2; all 6 observations count: r = 6 - 2 - 1; each axis is measured twice.
  const double error = std::sqrt(36.0 / 3.0) * 0.01 / std::sqrt(2.0);
  EXPECT_NEAR(p.mx, error, 1e-6);
  EXPECT_NEAR(p.my, error, 1e-6);
  EXPECT_NEAR(p.e, error, 1e-6);
  EXPECT_NEAR(p.f, error, 1e-6);
  EXPECT_NEAR(Read(GetLengthResult, job, "W", "P").residual, -0.03, 1e-9);
}

TEST(DistanceAdjustment, HasOnlyTheNewPointsAsUnknowns) {
  CrossJob job;
  job.SetFormat(3);
  ASSERT_TRUE(ApproxCalc(job));
  ASSERT_TRUE(LeastSquareAdj(job));
  ExpectSymmetric(job);
  const PlaneResult n = ReadPlane(job, "N");
  EXPECT_EQ(n.x, 100);
  EXPECT_EQ(n.mx, 0);
  const auto line = ReadLine(job, "E", "P");
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->azimuth, 270, 1e-6);
  EXPECT_NEAR(line->lengthError, ReadPlane(job, "P").my, 1e-9);
  EXPECT_FALSE(ReadLine(job, "N", "S"));
}

TEST(DistanceAdjustment, TakesTheNetworkAsItStands) {
  CrossJob job;
  job.SetFormat(3);
  EXPECT_FALSE(LeastSquareAdj(job));  // never built
  ASSERT_TRUE(ApproxCalc(job));
  SetObsData(job, job.Index("E"), "P", Distance(70));
  SetAdjParam(job, Errors(1.0, 5.0));
  job.SetFormat(3);
  ASSERT_TRUE(LeastSquareAdj(job));
  ExpectSymmetric(job);
  EXPECT_NEAR(Read(GetLengthResult, job, "E", "P").apriori, 0.01, 1e-15);
}

// Whatever ran before, the redundancy is the same.
TEST(DistanceAdjustment, DoesNotDependOnAnEarlierAdjustment) {
  CrossJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  job.SetFormat(3);
  ASSERT_TRUE(LeastSquareAdj(job));
  ExpectSymmetric(job);
  ASSERT_TRUE(LeastSquareAdj(job));
  ExpectSymmetric(job);
}

TEST(DistanceAdjustment, FailsWhenAPointHasNoCoordinates) {
  CrossJob job;
  job.Add("Q");
  EXPECT_FALSE(ApproxCalc(job));
  job.SetFormat(3);
  EXPECT_FALSE(LeastSquareAdj(job));
}

}  // namespace
}  // namespace brenu::testing
