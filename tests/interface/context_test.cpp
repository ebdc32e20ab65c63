// Parameters, null arguments, independence of contexts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

using ::testing::Each;

template <typename... T>
std::vector<std::int64_t> Results(T... results) {
  return {static_cast<std::int64_t>(results)...};
}

TEST(Parameters, FreshContextHoldsTheDefaultsAndKeepsWhatIsSet) {
  const Job job;
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(AdjParam{2.5, 5.0, 5.0, 4, 20, 4, 5, 3, 0}));
  // No check, and no grade table: the limits stay as given.
  const AdjParam odd = {-1.0, 1e308, 0.0, 3, -7, 99, std::numeric_limits<int32_t>::min(), 0, 12};
  SetAdjParam(job, odd);
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(odd));
  EXPECT_EQ(GetAdjParam(Job()).MO, 2.5);  // of this context only
  EXPECT_EQ(Bytes(GetAdjParam(nullptr)), Bytes(AdjParam{}));
}

TEST(NullContext, GivesTheNeutralValue) {
  AdjustmentContext* const none = nullptr;
  const ObsData obs = Distance(1.0);
  PointData point = MakePoint("A");
  ObsData obsOut{};
  PlaneResult plane{};
  VerticalResult vertical{};
  CloseError closure{};
  CircleRecord circle{};
  char text[255] = {};
  double d[12] = {};
  int32_t n = 0;
  uint32_t remaining = 0;
  EndAdjustment(none);
  SetAdjParam(none, AdjParam{});
  const auto indices =
      Results(AddPoint(none, 0, point), DeletePoint(none, 0), GetPoint(none, 0, &point),
              GetOriginalPoint(none, 0, &point), SetPoint(none, 0, point), GetPointNum(none, "A"),
              AddObsData(none, 0, "B", obs), AddObsData2(none, 0, "B", "C", obs, obs, 0),
              DeleteObsData(none, 0, "B"), GetObsData(none, 0, "B", &obsOut),
              SetObsData(none, 0, "B", obs));
  EXPECT_THAT(indices, Each(-1));
  const auto counts = Results(GetPointCount(none), GetObsDataCount(none, 0), GetNetType(none),
                              DataSnooping(none, 1, 0.001, 0.001), GetCloseErrorCount(none),
                              GetCloseErrorMark(none), SaveBrenuAdjustFile(none, "none"),
                              GetTrilaterationDirection(none, &circle, &circle, text),
                              GetTraverseResult(none, 0, d, d + 1, d + 2, d + 3, d + 4, d + 5,
                                                d + 6, d + 7, d + 8, d + 9, d + 10, d + 11, &n));
  EXPECT_THAT(counts, Each(0));
  const auto answers = Results(
      OpenBrenuAdjustFile(none, "none"), LoadKorvelAdjustFile(none, "none"), ApproxCalc(none),
      GetApproxResult(none, 0, &point), LeastSquareAdj(none), NonDirectionAdj(none),
      GetPlaneResult(none, 0, &plane), GetDirAngleResult(none, 0, "B", d, d + 1, d + 2),
      GetLengthResult(none, 0, "B", d, d + 1, d + 2),
      GetAzimuthResult(none, 0, "B", d, d + 1, d + 2),
      GetAzAndLenPrecision(none, 0, "B", d, d + 1, d + 2, d + 3, &n),
      GetVerticalResult(none, 0, &vertical),
      GetHeightObsResult(none, 0, "B", d, d + 1, d + 2, d + 3), CalculateCloseError(none),
      GetCloseError(none, 0, &closure), ExportResultFile(none, "none"),
      ExportCloseErrorFile(none, "none"), JudgeTrilateration(none),
      InitializeDataTrilateration(none), TrilaterationDirection(none),
      CalcTrilaterationpPoint(none, 0, circle, circle, "A", &remaining));
  EXPECT_THAT(answers, Each(0));
}

// Every call would succeed with its pointers in place.
TEST(NullPointers, AreRefused) {
  Job job;
  job.AddPoints({{"A", 11, 0, 0, 10}, {"B", 11, 100, 0, 11}, {"P"}});
  job.ObserveAll({{"A", "B", Direction(10)}, {"A", "P", {100.0, 55.0, 1.0, 45.0}}});
  ASSERT_TRUE(LeastSquareAdj(job));
  double d = 0;
  int32_t n = 0;
  const ObsData obs = Distance(1);
  const auto indices = Results(
      GetPoint(job, 0, nullptr), GetOriginalPoint(job, 0, nullptr), GetPointNum(job, nullptr),
      AddObsData(job, 1, nullptr, obs), AddObsData2(job, 1, nullptr, "P", obs, obs, 0),
      AddObsData2(job, 1, "P", nullptr, obs, obs, 0), DeleteObsData(job, 0, nullptr),
      GetObsData(job, 0, "P", nullptr), SetObsData(job, 0, nullptr, obs));
  EXPECT_THAT(indices, Each(-1));
  const auto others = Results(OpenBrenuAdjustFile(job, nullptr), SaveBrenuAdjustFile(job, nullptr),
                              LoadKorvelAdjustFile(job, nullptr), GetObsDataCount(job, 1),
                              GetApproxResult(job, 0, nullptr), GetPlaneResult(job, 2, nullptr),
                              GetVerticalResult(job, 2, nullptr));
  EXPECT_THAT(others, Each(0));
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
  EXPECT_TRUE(GetHeightObsResult(job, 0, "P", &d, &d, &d, &d));
  EXPECT_FALSE(GetHeightObsResult(job, 0, nullptr, &d, &d, &d, &d));
  EXPECT_FALSE(GetHeightObsResult(job, 0, "P", &d, &d, &d, nullptr));
  EXPECT_EQ(GetPointCount(job), 3U);
}

}  // namespace
}  // namespace brenu::testing
