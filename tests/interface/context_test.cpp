// Parameters, null arguments, independence of contexts.
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <string>

#include "support/job.h"
#include "support/null_pointers.h"
#include "support/plane_example.h"
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

// Each computation sees the points, observations and parameters of its time, whatever was computed
// and edited before: as where it is the first.
TEST(Computations, SeeEveryEdit) {
  using Step = void (*)(const PlaneExample&);
  constexpr Step kEdits[] = {
      [](const PlaneExample&) {},
      [](const PlaneExample& job) { job.PlantBlunders(); },
      [](const PlaneExample& job) { SetAdjParam(job, Errors(2.5, 0.005, 5e-6, 1)); },
      [](const PlaneExample& job) { SetAdjParam(job, Errors(5, 0.05)); },
      [](const PlaneExample& job) { job.Change("C", 10, 2000.5, 1500); },
      [](const PlaneExample& job) { job.Change("A", "P", kNothing); },
      [](const PlaneExample& job) { DeletePoint(job, job.Index("Q")); },
      [](const PlaneExample& job) { AddPoint(job, 77, MakePoint("R", 10, 5, 6)); },
      [](const PlaneExample& job) { job.Change("P", 11, 1600, 1300, 102); }};
  using Computation = bool (*)(const PlaneExample&);
  constexpr Computation kComputations[] = {
      [](const PlaneExample& job) { return ApproxCalc(job); },
      [](const PlaneExample& job) { return LeastSquareAdj(job); },
      [](const PlaneExample& job) { return NonDirectionAdj(job); },
      [](const PlaneExample& job) { return DataSnooping(job, 2, 0.001, 0.001) == 1; },
      [](const PlaneExample& job) { return DataSnooping(job, 3, 0.001, 0.001) == 1; }};
  const auto results = [](const Job& job) {
    std::string bytes;
    for (std::int32_t i = 0; i < 6; ++i) {
      PointData approximate{};
      PlaneResult plane{};
      VerticalResult height{};
      if (GetApproxResult(job, i, &approximate)) bytes += Bytes(approximate);
      if (GetPlaneResult(job, i, &plane)) bytes += Bytes(plane);
      if (GetVerticalResult(job, i, &height)) bytes += Bytes(height);
      for (const char* target : {"A", "B", "C", "P", "Q"}) {
        ObsResult obs{};
        if (GetDirAngleResult(job, i, target, &obs.residual, &obs.adjusted, &obs.apriori)) {
          bytes += Bytes(obs);
        }
      }
    }
    return bytes;
  };
  int computed = 0;
  for (std::size_t last = 0; last < std::size(kEdits); ++last) {
    for (const Computation compute : kComputations) {
      const PlaneExample first;
      const PlaneExample editedBetween;
      const PlaneExample placedBefore;
      for (std::size_t i = 0; i <= last; ++i) {
        kEdits[i](first);
        if (i == last) ApproxCalc(editedBetween);
        kEdits[i](editedBetween);
        kEdits[i](placedBefore);
      }
      ApproxCalc(placedBefore);
      const bool done = compute(first);
      EXPECT_EQ(compute(editedBetween), done);
      EXPECT_EQ(compute(placedBefore), done);
      if (!done) continue;
      ++computed;
      const std::string expected = results(first);
      EXPECT_TRUE(results(editedBetween) == expected && results(placedBefore) == expected)
          << "after edit " << last;
    }
  }
  EXPECT_GT(computed, 20);
}

}  // namespace
}  // namespace brenu::testing
