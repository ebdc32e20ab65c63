#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/job.h"

namespace brenu::testing {
namespace {

// Bench marks A (10 m) and B (11.5 m) with the new point N between them, 400 m and 500 m: from A
// over N to B the differences sum up to 1 + 0.51 = 1.51 m, 10 mm more than the bench marks say.
struct LineJob : Job {
  LineJob()
      : Job({{"A", 1, 0, 0, 10.0}, {"B", 1, 0, 0, 11.5}, {"N"}},
            {{"A", {{"N", Levelled(400, 1.0)}}}, {"B", {{"N", Levelled(500, -0.51)}}}}) {}
};

// Two bench marks are called M in the end: neither end of a line may count twice.
TEST(Closures, BenchMarksOfOneNameGiveALineOnce) {
  LineJob job;
  for (const char* name : {"M", "Z"}) {
    job.Add(name, 1, 0, 0, 11.0);
    job.Observe("N", name, Levelled(100, 0.5));
  }
  SetPoint(job, job.Index("B"), MakePoint("M", 1, 0, 0, 11.5));
  EXPECT_EQ(Routes(Closures(job)), (Strings{"M - N - A", "Z - N - A", "Z - N - M"}));
  // A line to a name without point, which a refused renaming leaves, leaves no shortest routes.
  EXPECT_EQ(SetPoint(job, job.Index("Z"), MakePoint("A", 1, 0, 0, 11.0)), -1);
  EXPECT_EQ(Routes(Closures(job)), Strings{});
}

// A triangle of 1 km with the bench mark A, which closes with 1 + 2 - `back` metres reversed.
TEST(Closures, LoopAtOneBenchMarkAndMisclosuresAtTheLimit) {
  const Job job({{"A", 1, 0, 0, 10.0}, {"B"}, {"C"}},
                {{"A", {{"B", Levelled(250, 1.0)}, {"C", Levelled(500, 3.012)}}},
                 {"B", {{"C", Levelled(250, 2.0)}}}});
  const auto records = Closures(job);
  ASSERT_EQ(Routes(records), Strings{"A - C - B - A"});
  const CloseError& r = records.front();
  EXPECT_TRUE(Near({r.heightMisclosure, r.heightLimit, r.routeLength}, {12, 20, 1000}, 1e-9));
  EXPECT_TRUE(r.angleWithinLimit && r.heightWithinLimit && r.mark);
  SetAdjParam(job, {2.5, 5, 5, 4, 125, 4, 5, 3, 0});  // exact in binary, as is the misclosure
  for (const double sign : {1.0, -1.0}) {
    job.Change("A", "C", Levelled(500, 3.0 + sign * 0.125));
    EXPECT_EQ(Closures(job).front().heightMisclosure, sign * 125.0);
    EXPECT_EQ(GetCloseErrorMark(job), 1);
    job.Change("A", "C", Levelled(500, 3.0 + sign * 0.126));
    EXPECT_FALSE(Closures(job).front().heightWithinLimit);
    EXPECT_EQ(GetCloseErrorMark(job), 0);
  }
}

TEST(Closures, LongRouteIsCutToItsField) {
  const LineJob job;
  const std::string whole =
      std::string(100, 'b') + " - " + std::string(100, 'n') + " - " + std::string(100, 'a');
  SetPoint(job, 0, MakePoint(whole.substr(206), 1, 0, 0, 10.0));
  SetPoint(job, 1, MakePoint(whole.substr(0, 100), 1, 0, 0, 11.0));
  SetPoint(job, 2, MakePoint(whole.substr(103, 100)));
  EXPECT_EQ(Routes(Closures(job)), Strings{whole.substr(0, 255)});
}

TEST(Closures, LengthsWithoutShortestRoutesGiveNoRecords) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double length :
       {-0.5, -kInfinity, kInfinity, std::numeric_limits<double>::quiet_NaN()}) {
    LineJob job;
    job.Observe("N", "A", Levelled(length, -1.0));
    EXPECT_EQ(Routes(Closures(job)), Strings{}) << length;
  }
}

TEST(Closures, RecordsOutOfRange) {
  const LineJob job;
  EXPECT_EQ(GetCloseErrorMark(job), 1);  // an empty list passes
  CloseError record{};
  record.routeLength = -7.0;
  EXPECT_FALSE(GetCloseError(job, 0, &record));
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_FALSE(GetCloseError(job, 1, &record));
  EXPECT_FALSE(GetCloseError(job, -1, &record));
  EXPECT_EQ(record.routeLength, -7.0);
  // Without bench marks there are no approximate heights, and the list stays.
  for (const char* name : {"A", "B"}) job.Change(name, 0);
  EXPECT_FALSE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 1);
}

// A new point by directions from two control points: no sides, so no traverse either.  With both
// networks, levelling without lines and loops is a failure where it is none alone.
TEST(Closures, CombinedNetworkNeedsALineOrALoop) {
  Job job({{"S", 10, 1000, 1000}, {"T", 10, 1000, 2000}, {"P"}},
          {{"S", {{"T", Direction(90.0)}, {"P", Direction(60.0)}}},
           {"T", {{"S", Direction(270.0)}, {"P", Direction(315.0)}}}});
  EXPECT_EQ(Routes(Closures(job)), Strings{});
  job.Change("S", 11, 1000, 1000, 50.0);
  job.ObserveAll({{"P", {{"S", Levelled(1400, -2.0)}, {"T", Levelled(1400, 1.0)}}}});
  EXPECT_FALSE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);

  job.Change("T", 11, 1000, 2000, 53.0);
  EXPECT_EQ(Routes(Closures(job)), Strings{"T - P - S"});
  job.Change("P", "S", Levelled(-0.5, -2.0));  // no shortest routes
  EXPECT_FALSE(CalculateCloseError(job));
}

}  // namespace
}  // namespace brenu::testing
