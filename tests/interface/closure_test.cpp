#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

std::vector<CloseError> Closures(const Job& job) {
  std::vector<CloseError> records(static_cast<std::size_t>(GetCloseErrorCount(job)));
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_TRUE(GetCloseError(job, static_cast<std::int32_t>(i), &records[i]));
  }
  return records;
}

std::vector<std::string> Routes(const Job& job) {
  std::vector<std::string> routes;
  for (const CloseError& record : Closures(job)) routes.emplace_back(record.route);
  return routes;
}

using Strings = std::vector<std::string>;

// Bench marks A (10 m) and B (11.5 m) with the new point N between them, 400 m and 500 m: from A
// over N to B the differences sum up to 1 + 0.51 = 1.51 m, 10 mm more than the bench marks say.
void AddLine(Job& job) {
  job.Add("A", 1, 0, 0, 10.0);
  job.Add("B", 1, 0, 0, 11.5);
  job.Add("N");
  job.Observe("A", "N", Levelled(400, 1.0));
  job.Observe("B", "N", Levelled(500, -0.51));
}

// A triangle of 1 km with the bench mark A, which closes with 1 + 2 - `back` metres reversed.
void AddTriangle(Job& job, double back) {
  job.Add("A", 1, 0, 0, 10.0);
  job.Add("B");
  job.Add("C");
  job.Observe("A", "B", Levelled(250, 1.0));
  job.Observe("B", "C", Levelled(250, 2.0));
  job.Observe("A", "C", Levelled(500, back));
}

TEST(Closures, LineBetweenBenchMarks) {
  Job job;
  AddLine(job);
  ASSERT_TRUE(CalculateCloseError(job));
  ASSERT_EQ(GetCloseErrorCount(job), 1);
  const CloseError record = Closures(job).front();
  EXPECT_STREQ(record.route, "B - N - A");
  EXPECT_NEAR(record.heightMisclosure, -10.0, 1e-9);
  EXPECT_NEAR(record.heightLimit, 18.9736659610, 1e-9);  // 20 sqrt(0.9)
  EXPECT_EQ(record.routeLength, 900.0);
  EXPECT_TRUE(record.angleWithinLimit && record.heightWithinLimit && record.mark);
  EXPECT_EQ(record.angleMisclosure, 0.0);
  EXPECT_EQ(record.lengthLimit, 0.0);
  EXPECT_EQ(record.relativePrecision, 0);
  EXPECT_EQ(GetCloseErrorMark(job), 1);

  AdjParam param = GetAdjParam(job);
  param.Lvl1Limit = 10;  // 9.5 mm
  SetAdjParam(job, param);
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_TRUE(Closures(job).front().angleWithinLimit);
  EXPECT_FALSE(Closures(job).front().heightWithinLimit);
  EXPECT_FALSE(Closures(job).front().mark);
  EXPECT_EQ(GetCloseErrorMark(job), 0);
}

TEST(Closures, OneObservationBetweenBenchMarksIsNoLine) {
  Job job;
  job.Add("A", 1, 0, 0, 10.0);
  job.Add("B", 1, 0, 0, 11.5);
  job.Observe("A", "B", Levelled(400, 1.6));
  EXPECT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);
}

TEST(Closures, LoopAtOneBenchMark) {
  Job job;
  AddTriangle(job, 3.012);
  ASSERT_TRUE(CalculateCloseError(job));
  ASSERT_EQ(GetCloseErrorCount(job), 1);
  const CloseError record = Closures(job).front();
  EXPECT_STREQ(record.route, "A - C - B - A");
  // Around the loop 1 + 2 - 3.012 m, with the sign reversed; 20 sqrt(1 km).
  EXPECT_NEAR(record.heightMisclosure, 12.0, 1e-9);
  EXPECT_EQ(record.heightLimit, 20.0);
  EXPECT_EQ(record.routeLength, 1000.0);
  EXPECT_TRUE(record.mark);
}

TEST(Closures, MisclosureEqualToTheLimitPasses) {
  for (const double sign : {1.0, -1.0}) {
    Job job;
    AdjParam param = GetAdjParam(job);
    param.Lvl1Limit = 125;
    SetAdjParam(job, param);
    AddTriangle(job, 3.0 + sign * 0.125);  // exact in binary, as is the limit of 1 km
    ASSERT_TRUE(CalculateCloseError(job));
    EXPECT_EQ(Closures(job).front().heightMisclosure, sign * 125.0);
    EXPECT_EQ(GetCloseErrorMark(job), 1);
    SetObsData(job, job.Index("A"), "C", Levelled(500, 3.0 + sign * 0.126));
    ASSERT_TRUE(CalculateCloseError(job));
    EXPECT_EQ(GetCloseErrorMark(job), 0);
  }
}

TEST(Closures, TreeHasNone) {
  Job job;
  job.Add("A", 1, 0, 0, 10.0);
  for (const char* name : {"B", "C"}) {
    job.Add(name);
    job.Observe("A", name, Levelled(400, 1.0));
  }
  EXPECT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);
}

// Two triangles with the common side A-C: it is on the way back of the first loop, so that it
// starts none itself, but the second loop goes back over it as well.
TEST(Closures, ObservationOfALoopMayCloseALaterOne) {
  Job job;
  job.Add("A", 1, 0, 0, 10.0);
  for (const char* name : {"B", "C", "D"}) job.Add(name);
  for (const char* name : {"B", "C", "D"}) job.Observe("A", name, Levelled(100, 1.0));
  job.Observe("B", "C", Levelled(100, 0.001));
  job.Observe("C", "D", Levelled(100, 0.002));
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(Routes(job), (Strings{"A - C - B - A", "A - C - D - A"}));
}

// A-B is observed there (+1.000) and back (-1.003).  Both ways to the point are 100 m, the first
// one found is taken; the pair itself is no loop.
TEST(Closures, ObservationsThereAndBack) {
  Job job;
  job.Add("A", 1, 0, 0, 10.0);
  job.Add("B");
  job.Add("C");
  job.Observe("A", "B", Levelled(100, 1.0));
  job.Observe("B", "A", Levelled(100, -1.003));
  job.Observe("B", "C", Levelled(100, 0.5));
  job.Observe("A", "C", Levelled(100, 1.51));
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(Routes(job), Strings{"A - B - C - A"});
  EXPECT_NEAR(Closures(job).front().heightMisclosure, -10.0, 1e-9);  // 0.5 + 1 - 1.51

  SetObsData(job, job.Index("B"), "A", Levelled(50, -1.003));  // now the shorter way
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(Routes(job), Strings{"A - B - C - A"});
  EXPECT_NEAR(Closures(job).front().heightMisclosure, -7.0, 1e-9);
  EXPECT_EQ(Closures(job).front().routeLength, 250.0);
}

TEST(Closures, LongRouteIsCutToItsField) {
  Job job;
  const std::string names[] = {std::string(100, 'a'), std::string(100, 'b'), std::string(100, 'n')};
  job.Add(names[0], 1, 0, 0, 10.0);
  job.Add(names[1], 1, 0, 0, 11.0);
  job.Add(names[2]);
  job.Observe(names[0], names[2], Levelled(100, 1.0));
  job.Observe(names[2], names[1], Levelled(100, 0.5));
  ASSERT_TRUE(CalculateCloseError(job));
  const std::string whole = names[1] + " - " + names[2] + " - " + names[0];
  EXPECT_EQ(Routes(job), Strings{whole.substr(0, 255)});
}

TEST(Closures, LengthsWithoutShortestRoutesGiveNoRecords) {
  for (const double length :
       {-450.0, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    Job job;
    AddLine(job);
    job.Observe("N", "A", Levelled(length, -1.0));
    EXPECT_TRUE(CalculateCloseError(job)) << length;
    EXPECT_EQ(GetCloseErrorCount(job), 0) << length;
  }
}

TEST(Closures, RecordsOutOfRange) {
  Job job;
  CloseError record{};
  record.routeLength = -7.0;
  EXPECT_FALSE(GetCloseError(job, 0, &record));
  AddLine(job);
  ASSERT_TRUE(CalculateCloseError(job));
  EXPECT_FALSE(GetCloseError(job, 1, &record));
  EXPECT_FALSE(GetCloseError(job, -1, &record));
  EXPECT_FALSE(GetCloseError(job, 0, nullptr));
  EXPECT_FALSE(GetCloseError(nullptr, 0, &record));
  EXPECT_EQ(record.routeLength, -7.0);
}

TEST(Closures, EmptyListPassesAndNoContextDoesNot) {
  const Job job;
  EXPECT_EQ(GetCloseErrorMark(job), 1);
  EXPECT_EQ(GetCloseErrorMark(nullptr), 0);
  EXPECT_EQ(GetCloseErrorCount(nullptr), 0);
  EXPECT_FALSE(CalculateCloseError(nullptr));
}

TEST(Closures, WithoutApproximateHeightsTheListStays) {
  Job job;
  AddLine(job);
  ASSERT_TRUE(CalculateCloseError(job));
  for (const char* name : {"A", "B"}) SetPoint(job, job.Index(name), MakePoint(name));
  EXPECT_FALSE(CalculateCloseError(job));  // no bench mark
  EXPECT_EQ(GetCloseErrorCount(job), 1);
}

// A new point by directions from two control points: no sides, so no traverse either.
void AddIntersection(Job& job) {
  job.Add("S", 10, 1000, 1000);
  job.Add("T", 10, 1000, 2000);
  job.Add("P");
  job.Observe("S", "T", Direction(90.0));
  job.Observe("S", "P", Direction(60.0));
  job.Observe("T", "S", Direction(270.0));
  job.Observe("T", "P", Direction(315.0));
}

TEST(Closures, PlaneNetworkWithoutTraversesHasNone) {
  Job job;
  AddIntersection(job);
  EXPECT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);
}

// With both networks, levelling without lines and loops is a failure where it is none alone.
TEST(Closures, CombinedNetworkNeedsALineOrALoop) {
  Job job;
  AddIntersection(job);
  SetPoint(job, job.Index("S"), MakePoint("S", 11, 1000, 1000, 50.0));
  job.Observe("P", "S", Levelled(1400, -2.0));
  job.Observe("P", "T", Levelled(1400, 1.0));
  EXPECT_FALSE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);

  SetPoint(job, job.Index("T"), MakePoint("T", 11, 1000, 2000, 53.0));
  EXPECT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(Routes(job), Strings{"T - P - S"});
}

}  // namespace
}  // namespace brenu::testing
