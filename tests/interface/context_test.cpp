// Parameters, null arguments, independence of contexts.
#include <gtest/gtest.h>

#include <limits>

#include "support/job.h"
#include "support/null_pointers.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

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

TEST(NullPointers, AreRefusedByEveryFunction) {
  const Job job({{"A", 11, 100, 100, 10}, {"B", 11, 100, 200, 11}, {"P"}},
                {{"A", {{"B", {100, 130, 1, -1}}, {"P", {111.803, 66.3354, 2, 26.3354}}}},
                 {"B", {{"A", Direction(310)}, {"P", {111.803, 13.2606, 1, -1}}}},
                 {"P", {{"A", Direction(246.3354)}, {"B", Direction(193.2606)}}}});
  PointData point = MakePoint("new");
  ObsData obs = Distance(1);
  double d = 0;
  std::int32_t n = 0;
  ExpectRefusesNull(0, GetPointCount, job);
  ExpectRefusesNull(-1, AddPoint, job, 3, point);
  ExpectRefusesNull(-1, SetPoint, job, 3, MakePoint("N"));
  ExpectRefusesNull(-1, GetPoint, job, 0, &point);
  ExpectRefusesNull(-1, GetOriginalPoint, job, 0, &point);
  ExpectRefusesNull(-1, GetPointNum, job, "A");
  ExpectRefusesNull(-1, AddObsData, job, 3, "A", obs);
  ExpectRefusesNull(-1, SetObsData, job, 3, "A", obs);
  ExpectRefusesNull(-1, GetObsData, job, 3, "A", &obs);
  ExpectRefusesNull(0, GetObsDataCount, job, 3);
  ExpectRefusesNull(-1, DeleteObsData, job, 3, "A");
  ExpectRefusesNull(-1, AddObsData2, job, 3, "A", "B", obs, obs, 0);
  ExpectRefusesNull(-1, DeletePoint, job, 3);

  ExpectRefusesNull(0, GetNetType, job);
  ExpectRefusesNull(false, ApproxCalc, job);
  ExpectRefusesNull(false, GetApproxResult, job, 0, &point);
  ExpectRefusesNull(0, DataSnooping, job, 3, 0.001, 0.001);
  ExpectRefusesNull(false, LeastSquareAdj, job);
  PlaneResult plane;
  VerticalResult height;
  ExpectRefusesNull(false, GetPlaneResult, job, 2, &plane);
  ExpectRefusesNull(false, GetVerticalResult, job, 2, &height);
  for (const ObsGetter getter : {GetDirAngleResult, GetLengthResult, GetAzimuthResult}) {
    ExpectRefusesNull(false, getter, job, 0, "P", &d, &d, &d);
  }
  ExpectRefusesNull(false, GetAzAndLenPrecision, job, 0, "P", &d, &d, &d, &d, &n);
  ExpectRefusesNull(false, GetHeightObsResult, job, 0, "P", &d, &d, &d, &d);
  const TempFile file;
  ExpectRefusesNull(false, ExportResultFile, job, file.Path());

  ExpectRefusesNull(false, CalculateCloseError, job);
  CloseError closure;
  ExpectRefusesNull(0, GetCloseErrorCount, job);
  ExpectRefusesNull(false, GetCloseError, job, 0, &closure);
  ExpectRefusesNull(0, GetCloseErrorMark, job);
  ExpectRefusesNull(false, ExportCloseErrorFile, job, file.Path());
  ExpectRefusesNull(0, GetTraverseResult, job, 2, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d,
                    &n);

  SetAdjParam(job, Errors(2.5, 5, 5, 1));
  SetAdjParam(nullptr, AdjParam{});
  ExpectRefusesNull(false, NonDirectionAdj, job);
  SetAdjParam(job, Errors(2.5, 5, 5, 3));
  CircleRecord first, second;
  char text[255] = {};
  std::uint32_t remaining = 0;
  ExpectRefusesNull(false, JudgeTrilateration, job);
  ExpectRefusesNull(false, InitializeDataTrilateration, job);
  ExpectRefusesNull(0, GetTrilaterationDirection, job, &first, &second, text);
  ExpectRefusesNull(false, CalcTrilaterationpPoint, job, 0, first, second, "P", &remaining);
  EXPECT_FALSE(CalcTrilaterationpPoint(job, 0, CircleRecord{}, second, "P", &remaining));
  EXPECT_FALSE(CalcTrilaterationpPoint(job, 0, first, CircleRecord{}, "P", &remaining));
  CalcTrilaterationpPoint(job, 1, first, second, "P", &remaining);  // the other side
  ExpectRefusesNull(false, TrilaterationDirection, job);

  ExpectRefusesNull(0, SaveBrenuAdjustFile, job, file.Path());
  ExpectRefusesNull(false, OpenBrenuAdjustFile, Job(), file.Path());
  ExpectRefusesNull(false, LoadKorvelAdjustFile, Job(), TempFile().Path());
  EndAdjustment(nullptr);
}

}  // namespace
}  // namespace brenu::testing
