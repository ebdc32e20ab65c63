#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

#include "support/job.h"
#include "support/plane_example.h"
#include "support/report_text.h"

namespace brenu::testing {
namespace {

// "From To" of the rows that a section of the result report remarks as gross errors.
Strings GrossErrors(const Job& job, const std::string& keyword) {
  Strings found;
  std::istringstream rows(Section(Export(ExportResultFile, job).text, keyword));
  for (std::string row; std::getline(rows, row);) {
    if (!row.ends_with("  gross error")) continue;
    std::istringstream cells(row);
    std::string from, to;
    cells >> from >> to;
    found.push_back(from + ' ' + to);
  }
  return found;
}

// Bench marks A (10 m) and B (20 m), each observed to P and back over 1 km: three observations put
// P at 15.000, 15.001 and 15.002 m, the one from P to B at 20 m less `last`.
struct LevelJob : Job {
  explicit LevelJob(double last = 5.0)
      : Job({{"A", 1, 0, 0, 10.0}, {"B", 1, 0, 0, 20.0}, {"P"}},
            {{"A", {{"P", Levelled(1000, 5.000)}}},
             {"P", {{"A", Levelled(1000, -5.001)}, {"B", Levelled(1000, last)}}},
             {"B", {{"P", Levelled(1000, -4.998)}}}}) {}
};

// In the first round P is at 14.98825 m and w = 38.25 mm / sqrt(1 - 1/4) = 44; in the second w is
// 1 mm / sqrt(1 - 1/3) = 1.2 at most.
TEST(LevelSnooping, TakesTheBlunderOut) {
  const LevelJob job(5.050);
  ASSERT_EQ(DataSnooping(job, 1, 0.001, 0.001), 1);
  EXPECT_NEAR(ReadHeight(job, "P").height, 15.001, 1e-9);
  const HeightObs taken = ReadHeightObs(job, "P", "B").value();
  EXPECT_EQ(taken.weight, 0.0);
  EXPECT_NEAR(taken.residual, -0.051, 1e-9);  // 20 - 15.001 - 5.050
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{"P B"});
  // [pvv] = 1 + 0 + 1 mm^2 over one new height (the redundancy would be 2), and Q = 1/3.
  EXPECT_NEAR(ReadHeight(job, "P").sigma, 0.001 * std::sqrt(2.0 / 3.0), 1e-9);
  EXPECT_NEAR(ReadHeightObs(job, "A", "P")->residual, 0.001, 1e-9);
  // An adjustment forgets what was taken out, and a negative weight is not one of zero.
  job.Change("A", "P", Levelled(-1000, 5.0));
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{});

  const LevelJob good;
  ASSERT_EQ(DataSnooping(good, 1, 0.001, 0.001), 1);
  const std::string snooped = Export(ExportResultFile, good).text;
  ASSERT_TRUE(LeastSquareAdj(good));
  EXPECT_EQ(snooped, Export(ExportResultFile, good).text);
}

// 1/256 m between the two observations of P, all numbers exact in binary: both have w = 1.953 mm /
// sqrt(1/2) = 2.762.  The critical values are 2.807 for 0.005 and 2.748 for 0.006.
TEST(LevelSnooping, OfEqualTestValuesTheFirstInWalkOrderGoes) {
  const Job job({{"P"}, {"B", 1, 0, 0, 20.0}, {"A", 1, 0, 0, 10.0}},
                {{"B", {{"P", Levelled(1000, -4.99609375)}}}, {"A", {{"P", Levelled(1000, 5.0)}}}});
  ASSERT_EQ(DataSnooping(job, 1, 0.005, 0.001), 1);
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{});
  ASSERT_EQ(DataSnooping(job, 1, 0.006, 0.001), 1);
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{"A P"});
  EXPECT_NEAR(ReadHeight(job, "P").height, 15.00390625, 1e-12);
}

// A line between two bench marks shows a blunder in all its parts alike, whatever rounding makes of
// their test values.
TEST(LevelSnooping, OfPartsOfOneLineTheFirstInWalkOrderGoes) {
  for (int length = 300; length < 320; ++length) {
    const Job job({{"A", 1, 0, 0, 10.0}, {"B", 1, 0, 0, 20.0}, {"P"}, {"Q"}},
                  {{"A", {{"P", Levelled(700, 3.1)}}},
                   {"P", {{"Q", Levelled(length, 3.2)}}},
                   {"Q", {{"B", Levelled(900, 3.9)}}}});
    ASSERT_EQ(DataSnooping(job, 1, 0.001, 0.001), 1);
    EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{"A P"}) << length;
  }
}

// The example has 20 directions and 10 distances, 5 orientations and 2 new points.  Without the two
// blunders its redundancy is 28 - 9 = 19, but snooping counts each of them twice: 30 - 9 - 4 = 17.
TEST(CombinedSnooping, TakesTheBlundersOutAndCountsThoseOfThePlaneTwice) {
  PlaneExample job(11);
  const PlaneExample without(11);
  ASSERT_EQ(DataSnooping(job, 3, 0.001, 0.001), 1);  // no blunders yet
  ASSERT_TRUE(LeastSquareAdj(without));  // one pass: the approximate values are good to 10 mm
  EXPECT_EQ(Export(ExportResultFile, job).text, Export(ExportResultFile, without).text);

  job.PlantBlunders();
  ObsData spoiled = Stored(job, "A", "P");
  spoiled.heightDiff += 0.05;
  job.Change("A", "P", spoiled);
  ASSERT_EQ(DataSnooping(job, 3, 0.001, 0.001), 1);
  EXPECT_EQ(GrossErrors(job, "[HEIGHT]"), Strings{"A P"});
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Strings{"B Q"});
  EXPECT_EQ(GrossErrors(job, "[LENGTH]"), Strings{"C P"});
  // What was taken out keeps a residual, here about the negative of the blunder.
  EXPECT_NEAR(Read(GetLengthResult, job, "C", "P").residual, -0.2, 0.005);
  EXPECT_NEAR(Read(GetDirAngleResult, job, "B", "Q").residual, 60.0, 3.0);
  without.DeleteBlunders();
  ASSERT_TRUE(LeastSquareAdj(without));
  const double ratio = std::sqrt(19.0 / 17.0);
  for (const char* name : {"P", "Q"}) {
    const PlaneResult a = ReadPlane(job, name);
    const PlaneResult b = ReadPlane(without, name);
    EXPECT_TRUE(Near({a.x, a.y}, {b.x, b.y}, 1e-6));
    EXPECT_TRUE(Near({a.mx / b.mx, a.my / b.my}, {ratio, ratio}, 1e-3));
  }

  job.Add("R");
  job.Observe("A", "R", Levelled(300, 1.0));  // R has no place,
  EXPECT_EQ(DataSnooping(job, 3, 0.001, 0.001), 0);
  job.Change("A", "R", Direction(10.0, 300));  // and now no height
  EXPECT_EQ(DataSnooping(job, 3, 0.001, 0.001), 0);
}

// A round of directions to three control points, the first 9" off: the residuals are 6", -3", -3",
// one direction has the cofactor MO^2 / 3, and so the largest test value is 6 / (2.5 sqrt(2/3)) =
// 2.939.  The critical values are 2.878 for 0.004 and 2.968 for 0.003.
TEST(PlaneSnooping, ComparesTheStandardisedResidual) {
  const Job job(
      {{"A", 10, 1000, 1000}, {"B", 10, 2000, 1000}, {"C", 10, 1000, 2000}, {"D", 10, 500, 1000}},
      {{"A", {{"B", Direction(39.5954)}, {"C", Direction(130.0003)}, {"D", Direction(220.0003)}}}});
  ASSERT_EQ(DataSnooping(job, 2, 0.001, 0.003), 1);
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Strings{});
  ASSERT_EQ(DataSnooping(job, 2, 0.001, 0.004), 1);
  EXPECT_EQ(GrossErrors(job, "[DIRANGLE]"), Strings{"A B"});
}

TEST(Snooping, KindMustBeTheNetworkType) {
  const Job none;
  const LevelJob level;
  const PlaneExample plane;
  const PlaneExample both(11);
  const Job* const jobs[] = {&none, &level, &plane, &both};
  for (const std::uint32_t type : {0u, 1u, 2u, 3u}) {
    for (const std::uint32_t kind : {0u, 1u, 2u, 3u, 4u}) {
      const std::uint8_t expected = type > 0 && kind == type ? 1 : 0;
      EXPECT_EQ(DataSnooping(*jobs[type], kind, 0.001, 0.001), expected);
    }
  }
  // Above 1 the critical value is negative, and nothing but the number of observations ends the
  // rounds; whether the last of them can still be solved is left open.
  DataSnooping(level, 1, 1.5, 1.5);
  DataSnooping(plane, 2, 1.5, 1.5);
}

}  // namespace
}  // namespace brenu::testing
