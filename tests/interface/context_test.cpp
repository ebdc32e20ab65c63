// Parameters, null arguments, independence of contexts.
#include <gtest/gtest.h>

#include <limits>

#include "support/job.h"

namespace brenu::testing {
namespace {

TEST(Parameters, FreshContextHoldsTheDefaultsAndKeepsWhatIsSet) {
  const Job job;
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(AdjParam{2.5, 5.0, 5.0, 4, 20, 4, 5, 3, 0}));
  // No check, and no grade table: the limits stay as given.
  const AdjParam odd = {-1.0, 1e308, 0.0, 3, -7, 99, std::numeric_limits<int32_t>::min(), 0, 12};
  SetAdjParam(job, odd);
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(odd));
  EXPECT_EQ(Bytes(GetAdjParam(nullptr)), Bytes(AdjParam{}));
}

TEST(Contexts, AreIndependent) {
  Job one;
  const Job two;
  SetAdjParam(one, Errors(1.0, 1.0));
  one.Add("A", 11);
  EXPECT_EQ(GetNetType(one), 3);
  EXPECT_EQ(GetPointCount(two), 0U);
  EXPECT_EQ(GetNetType(two), 0);
  EXPECT_EQ(GetAdjParam(two).MO, 2.5);
}

TEST(NullContext, GivesTheNeutralValue) {
  AdjustmentContext* const none = nullptr;
  const ObsData obs = Distance(1.0);
  PointData point = MakePoint("A");
  ObsData obsOut{};
  double d[12] = {};
  int32_t n = 0;
  EndAdjustment(none);
  SetAdjParam(none, AdjParam{});
  EXPECT_FALSE(OpenBrenuAdjustFile(none, "none"));
  EXPECT_EQ(SaveBrenuAdjustFile(none, "none"), 0);
  EXPECT_FALSE(LoadKorvelAdjustFile(none, "none"));
  EXPECT_EQ(GetPointCount(none), 0U);
  EXPECT_EQ(AddPoint(none, 0, point), -1);
  EXPECT_EQ(DeletePoint(none, 0), -1);
  EXPECT_EQ(GetPoint(none, 0, &point), -1);
  EXPECT_EQ(GetOriginalPoint(none, 0, &point), -1);
  EXPECT_EQ(SetPoint(none, 0, point), -1);
  EXPECT_EQ(GetPointNum(none, "A"), -1);
  EXPECT_EQ(GetObsDataCount(none, 0), 0);
  EXPECT_EQ(AddObsData(none, 0, "B", obs), -1);
  EXPECT_EQ(AddObsData2(none, 0, "B", "C", obs, obs, 0), -1);
  EXPECT_EQ(DeleteObsData(none, 0, "B"), -1);
  EXPECT_EQ(GetObsData(none, 0, "B", &obsOut), -1);
  EXPECT_EQ(SetObsData(none, 0, "B", obs), -1);
  EXPECT_EQ(GetNetType(none), 0);
  EXPECT_FALSE(ApproxCalc(none));
  EXPECT_FALSE(GetApproxResult(none, 0, &point));
  EXPECT_FALSE(LeastSquareAdj(none));
  EXPECT_FALSE(NonDirectionAdj(none));
  EXPECT_EQ(DataSnooping(none, 1, 0.001, 0.001), 0);
  PlaneResult plane{};
  EXPECT_FALSE(GetPlaneResult(none, 0, &plane));
  EXPECT_FALSE(GetDirAngleResult(none, 0, "B", d, d + 1, d + 2));
  EXPECT_FALSE(GetLengthResult(none, 0, "B", d, d + 1, d + 2));
  EXPECT_FALSE(GetAzimuthResult(none, 0, "B", d, d + 1, d + 2));
  EXPECT_FALSE(GetAzAndLenPrecision(none, 0, "B", d, d + 1, d + 2, d + 3, &n));
  VerticalResult vertical{};
  EXPECT_FALSE(GetVerticalResult(none, 0, &vertical));
  EXPECT_FALSE(GetHeightObsResult(none, 0, "B", d, d + 1, d + 2, d + 3));
  EXPECT_FALSE(CalculateCloseError(none));
  EXPECT_EQ(GetCloseErrorCount(none), 0);
  CloseError closure{};
  EXPECT_FALSE(GetCloseError(none, 0, &closure));
  EXPECT_EQ(GetCloseErrorMark(none), 0);
  EXPECT_FALSE(ExportResultFile(none, "none"));
  EXPECT_FALSE(ExportCloseErrorFile(none, "none"));
  EXPECT_FALSE(JudgeTrilateration(none));
  EXPECT_FALSE(InitializeDataTrilateration(none));
  EXPECT_FALSE(TrilaterationDirection(none));
  CircleRecord circle{};
  char text[255] = {};
  uint32_t remaining = 0;
  EXPECT_EQ(GetTrilaterationDirection(none, &circle, &circle, text), 0);
  EXPECT_FALSE(CalcTrilaterationpPoint(none, 0, circle, circle, "A", &remaining));
  EXPECT_EQ(GetTraverseResult(none, 0, d, d + 1, d + 2, d + 3, d + 4, d + 5, d + 6, d + 7, d + 8,
                              d + 9, d + 10, d + 11, &n),
            0);
}

// Every call would succeed with its pointers in place.
TEST(NullPointers, AreRefused) {
  Job job;
  job.Add("A", 11, 0, 0, 10);
  job.Add("B", 11, 100, 0, 11);
  job.Add("P");
  job.Observe("A", "B", Direction(10));
  job.Observe("A", "P", {100.0, 55.0, 1.0, 45.0});
  ASSERT_TRUE(LeastSquareAdj(job));
  double d = 0;
  int32_t n = 0;
  EXPECT_FALSE(OpenBrenuAdjustFile(job, nullptr));
  EXPECT_EQ(SaveBrenuAdjustFile(job, nullptr), 0);
  EXPECT_FALSE(LoadKorvelAdjustFile(job, nullptr));
  EXPECT_EQ(GetPoint(job, 0, nullptr), -1);
  EXPECT_EQ(GetOriginalPoint(job, 0, nullptr), -1);
  EXPECT_EQ(GetPointNum(job, nullptr), -1);
  EXPECT_EQ(AddObsData(job, 1, nullptr, Distance(1)), -1);
  EXPECT_EQ(AddObsData2(job, 1, nullptr, "P", Distance(1), Distance(1), 0), -1);
  EXPECT_EQ(AddObsData2(job, 1, "P", nullptr, Distance(1), Distance(1), 0), -1);
  EXPECT_EQ(GetObsDataCount(job, 1), 0);
  EXPECT_EQ(DeleteObsData(job, 0, nullptr), -1);
  EXPECT_EQ(GetObsData(job, 0, "P", nullptr), -1);
  EXPECT_EQ(SetObsData(job, 0, nullptr, Distance(1)), -1);
  EXPECT_FALSE(GetApproxResult(job, 0, nullptr));
  EXPECT_FALSE(GetPlaneResult(job, 2, nullptr));
  for (const ObsGetter getter : {GetDirAngleResult, GetLengthResult, GetAzimuthResult}) {
    EXPECT_TRUE(getter(job, 0, "P", &d, &d, &d));
    EXPECT_FALSE(getter(job, 0, nullptr, &d, &d, &d));
    EXPECT_FALSE(getter(job, 0, "P", nullptr, &d, &d));
    EXPECT_FALSE(getter(job, 0, "P", &d, nullptr, &d));
    EXPECT_FALSE(getter(job, 0, "P", &d, &d, nullptr));
  }
  EXPECT_TRUE(GetAzAndLenPrecision(job, 0, "P", &d, &d, &d, &d, &n));
  EXPECT_FALSE(GetAzAndLenPrecision(job, 0, nullptr, &d, &d, &d, &d, &n));
  EXPECT_FALSE(GetAzAndLenPrecision(job, 0, "P", nullptr, &d, &d, &d, &n));
  EXPECT_FALSE(GetAzAndLenPrecision(job, 0, "P", &d, &d, &d, &d, nullptr));
  EXPECT_FALSE(GetVerticalResult(job, 2, nullptr));
  EXPECT_TRUE(GetHeightObsResult(job, 0, "P", &d, &d, &d, &d));
  EXPECT_FALSE(GetHeightObsResult(job, 0, nullptr, &d, &d, &d, &d));
  EXPECT_FALSE(GetHeightObsResult(job, 0, "P", &d, &d, &d, nullptr));
  EXPECT_EQ(GetPointCount(job), 3U);
}

}  // namespace
}  // namespace brenu::testing
