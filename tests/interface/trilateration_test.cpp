#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "support/job.h"
#include "support/report_text.h"

namespace brenu::testing {
namespace {

const AdjParam kDistancesOnly = Errors(2.5, 0.01, 0.0, 3);

struct Step {
  std::int32_t found = 0;
  CircleRecord first{}, second{};
  std::string text;
  std::string Name() const { return text.substr(0, text.find(':')); }
};

Step Next(const Job& job, const std::string& name = "") {
  std::array<char, 256> buffer;
  buffer.fill('!');  // also beyond the 255 bytes of the interface
  name.copy(buffer.data(), 254);
  buffer[std::min<std::size_t>(name.size(), 254)] = '\0';
  Step step;
  step.found = GetTrilaterationDirection(job, &step.first, &step.second, buffer.data());
  EXPECT_EQ(buffer[255], '!');
  EXPECT_TRUE(step.found == 0 || buffer[254] == '\0');
  step.text = std::string(buffer.data(), 255).c_str();
  return step;
}

std::uint32_t Place(const Job& job, bool right, const CircleRecord& first,
                    const CircleRecord& second, const std::string& name) {
  std::uint32_t remaining = 99;
  EXPECT_TRUE(CalcTrilaterationpPoint(job, right ? 1 : 0, first, second, name.c_str(), &remaining));
  return remaining;
}

// By number in the network: control points first.
std::pair<double, double> Position(const Job& job, std::int32_t number) {
  PointData point{};
  EXPECT_TRUE(GetApproxResult(job, number, &point));
  return {point.x, point.y};
}

void Begin(const Job& job) {
  SetAdjParam(job, kDistancesOnly);
  ASSERT_TRUE(JudgeTrilateration(job));
  ASSERT_TRUE(InitializeDataTrilateration(job));
}

// P at the origin, 100 m from three control points.  The distances from the north east and from the
// south west are measured 30 mm too long: P stays between them.  That from the north west fits; the
// directions only place P.
TEST(DistanceAdjustment, HasOnlyTheNewPointsAsUnknownsAndTakesTheNetworkAsItStands) {
  const double c = 100 / std::sqrt(2.0);
  const Job job({{"NE", 10, c, c}, {"SW", 10, -c, -c}, {"NW", 10, c, -c}, {"P"}},
                {{"NE", {{"SW", Direction(10)}, {"P", Direction(10, 100.03)}}},
                 {"SW", {{"P", Distance(100.03)}}},
                 {"NW", {{"P", Distance(100)}}}},
                kDistancesOnly);
  EXPECT_FALSE(LeastSquareAdj(job));  // nothing set up
  ASSERT_TRUE(ApproxCalc(job));
  job.Change("SW", "P", Distance(70));
  ASSERT_TRUE(LeastSquareAdj(job));
  // [pvv] = 2 * 3^2; all 5 observations count: r = 5 - 2 - 1, and m0 = 3.  Across the two distances
  // P has the standard error of one, along them that of their mean.
  const double f = 0.03 / std::sqrt(2.0);
  const PlaneResult p = ReadPlane(job, "P");
  EXPECT_TRUE(Near({p.x, p.y, ReadPlane(job, "NE").mx}, {0, 0, 0}, 1e-8));
  EXPECT_TRUE(Near({p.mx, p.my, p.e, p.f}, {p.my, p.mx, 0.03, f}, 1e-6));
  EXPECT_NEAR(p.mp, std::hypot(0.03, f), 1e-6);
  EXPECT_NEAR(p.t, 135, 1e-6);
  EXPECT_NEAR(Read(GetLengthResult, job, "SW", "P").residual, -0.03, 1e-9);
  const LineResult line = ReadLine(job, "SW", "P").value();
  EXPECT_TRUE(Near({line.azimuth, line.lengthError}, {45, f}, 1e-6));
  EXPECT_NEAR(line.azimuthError, 0.03 / 100 * 206264.806, 1e-3);
  EXPECT_FALSE(ReadLine(job, "NE", "SW"));

  // Data snooping counts all points as unknowns again, also right after such an adjustment.
  ASSERT_TRUE(DataSnooping(job, 2, 0.001, 0.001));
  const std::string snooped = Export(ExportResultFile, job).text;
  ASSERT_TRUE(ApproxCalc(job));
  ASSERT_TRUE(LeastSquareAdj(job));
  ASSERT_TRUE(DataSnooping(job, 2, 0.001, 0.001));
  EXPECT_EQ(Export(ExportResultFile, job).text, snooped);

  // The renaming is refused, but NW's distance has a name now that no point has.
  EXPECT_EQ(SetPoint(job, 2, MakePoint("SW", 10, c, -c)), -1);
  ASSERT_TRUE(ApproxCalc(job));
  EXPECT_FALSE(LeastSquareAdj(job));
}

// ---- Single steps: control points A and B on a line to the east, 60 m apart ----

class TwoCentres : public ::testing::Test {
 protected:
  TwoCentres() { Begin(job); }
  CircleRecord A(double radius) const { return {"A", x, 1000, radius}; }
  CircleRecord B(double radius) const { return {"B", x, 1060, radius}; }
  double x = 1000.0;
  Job job = Job({{"A", 10, x, 1000}, {"B", 10, x, 1060}, {"P"}, {"Q"}},
                {{"A", {{"P", Distance(50.0)}}},
                 {"B", {{"P", Distance(50.0)}}},
                 // Measured at the new point:
                 {"Q", {{"A", Distance(70.0)}, {"B", Distance(70.0)}}}});
};

// Half the base is 30 m, so P is 40 m off the line.  R hangs on P and Q.  Pairs without a distance
// get a direction when they have a reading, and break no report.  Heights are not computed, even
// beside a bench mark.
TEST_F(TwoCentres, FromTheDistancesToTheAdjustedNetwork) {
  job.Change("A", 11, 1000, 1000, 50);
  job.Add("R");
  job.ObserveAll(
      {{"P", {{"R", Distance(60)}, {"Q", Direction(10.0)}, {"A", {0.0, -1.0, 1.5, -1.0}}}},
       {"Q", {{"R", Distance(60)}}},
       {"A", {{"Q", Distance(70.02)}}}});
  Begin(job);
  EXPECT_EQ(Next(job).Name(), "P");
  EXPECT_EQ(Next(job, "R").found, 0);  // nothing to place it with
  EXPECT_EQ(Place(job, true, A(50), B(50), "P"), 2U);
  EXPECT_EQ(Position(job, 2), std::pair(960.0, 1030.0));
  EXPECT_EQ(Place(job, false, A(70), B(70), "Q"), 1U);
  EXPECT_FALSE(TrilaterationDirection(job));  // a point is left
  const Step r = Next(job);                   // P and Q would have better angles
  EXPECT_EQ(r.text, "R: P -> Q, left or right");
  EXPECT_EQ(Place(job, true, r.first, r.second, "R"), 0U);
  EXPECT_EQ(Next(job).found, 0);
  ASSERT_TRUE(TrilaterationDirection(job));
  EXPECT_NEAR(Read(GetDirAngleResult, job, "P", "Q").adjusted, 0.0, 1e-9);  // Q lies north of P
  ASSERT_TRUE(LeastSquareAdj(job));
  // With 70.01 m from A in the mean it is a little further east: 23".
  const double east = (70.01 * 70.01 - 70.0 * 70.0) / 120.0;
  const double north = 40.0 + std::sqrt(70.0 * 70.0 - (30.0 - east) * (30.0 - east));
  EXPECT_NEAR(Read(GetDirAngleResult, job, "P", "Q").adjusted, east / north * 20.6264806, 1e-6);
  EXPECT_NEAR(ReadLine(job, "Q", "R")->length, 60, 1e-6);
  EXPECT_GT(ReadPlane(job, "R").y, 1060);
  const ReportText report = Export(ExportResultFile, job);
  EXPECT_TRUE(report.complete);
  EXPECT_NE(Section(report.text, "[CONTROLPOINT]"), "");
  EXPECT_EQ(Section(report.text, "[VERTICAL]"), "");
}

TEST_F(TwoCentres, CirclesThatDoNotMeetPlaceNothing) {
  for (const bool right : {false, true}) {
    EXPECT_EQ(Place(job, right, A(30), B(30), "P"), 2U);   // touch
    EXPECT_EQ(Place(job, right, A(20), B(20), "P"), 2U);   // apart
    EXPECT_EQ(Place(job, right, A(100), B(20), "P"), 2U);  // one inside the other
    EXPECT_EQ(Place(job, right, A(50), A(50), "P"), 2U);   // concentric
  }
  EXPECT_EQ(Position(job, 2), std::pair(0.0, 0.0));
  // Half a metre apart they do.
  CircleRecord close = A(50);
  close.y += 0.5;
  EXPECT_EQ(Place(job, true, A(50), close, "P"), 1U);
}

// The side counts from the stored centres: circles 500 m further north meet on their left only.
TEST_F(TwoCentres, NothingIsPlacedWhenBothSolutionsLieOnTheOtherSide) {
  CircleRecord first = A(50);
  CircleRecord second = B(50);
  first.x = second.x = 1500.0;
  EXPECT_EQ(Place(job, true, first, second, "P"), 2U);
  EXPECT_EQ(Place(job, false, first, second, "P"), 1U);
  EXPECT_EQ(Position(job, 2), std::pair(1460.0, 1030.0));
  // A name that is no point counts and stands under -1; a centre that is none places nothing.
  EXPECT_EQ(Place(job, true, A(50), B(50), "nobody"), 0U);
  EXPECT_EQ(Position(job, -1), std::pair(960.0, 1030.0));
  EXPECT_EQ(Place(job, true, {"nowhere", 0, 0, 50}, B(50), "P"), 0U);
}

TEST_F(TwoCentres, PointAtXZeroCountsAsNotPlaced) {
  x = 40.0;
  job.Change("A", 10, x, 1000);
  job.Change("B", 10, x, 1060);
  Begin(job);
  EXPECT_EQ(Place(job, true, A(50), B(50), "P"), 1U);
  EXPECT_EQ(Position(job, 2), std::pair(0.0, 1030.0));
  EXPECT_EQ(Next(job, "P").found, 1);
  EXPECT_EQ(Place(job, false, A(70), B(70), "Q"), 0U);
  EXPECT_FALSE(TrilaterationDirection(job));
}

// The cosine of the angle between the circles is (2 r^2 - 60^2) / (2 r^2): 0.28 for P, 0.63 for Q.
TEST_F(TwoCentres, NextPointHasTheBestAngleOrIsTheOneAskedFor) {
  EXPECT_EQ(Next(job).text, "P: A -> B, left or right");
  const Step q = Next(job, "Q");
  EXPECT_EQ(q.text, "Q: A -> B, left or right");
  EXPECT_STREQ(q.second.name, "B");
  EXPECT_TRUE(Near({q.second.y, q.second.radius}, {1060, 70}, 0));
  EXPECT_EQ(Next(job, "A").found, 0);  // known
  EXPECT_EQ(Next(job, "nobody").found, 0);
  EXPECT_EQ(Next(job, q.text).found, 0);  // a buffer not emptied

  const auto measureQ = [this](double toA, double toB) {
    job.Change("Q", "A", Distance(toA));
    job.Change("Q", "B", Distance(toB));
    Begin(job);
  };
  measureQ(45.0, 40.0);  // 90 deg are nearer: 25 / 3600
  EXPECT_EQ(Next(job).Name(), "Q");
  measureQ(50.0, 50.0);
  EXPECT_EQ(Next(job).Name(), "P");  // equal: name order
  measureQ(20.0, 20.0);              // no circles that meet
  EXPECT_EQ(Next(job, "Q").found, 0);
}

TEST_F(TwoCentres, TextIsCutToTheBuffer) {
  const std::string a(127, 'a'), b(127, 'b'), p(127, 'p');
  SetPoint(job, 0, MakePoint(a, 10, 1000, 1000));
  SetPoint(job, 1, MakePoint(b, 10, 1000, 1060));
  SetPoint(job, 2, MakePoint(p));
  Begin(job);
  EXPECT_EQ(Next(job).text, (p + ": " + a + " -> " + b).substr(0, 254));
}

TEST_F(TwoCentres, RefusedWithoutFormatOrPlaneNetwork) {
  SetAdjParam(job, Errors(2.5, 0.01));
  EXPECT_FALSE(JudgeTrilateration(job));
  SetAdjParam(job, kDistancesOnly);
  for (const char* name : {"A", "B"}) job.Change(name, 1);
  EXPECT_TRUE(JudgeTrilateration(job));
  EXPECT_FALSE(InitializeDataTrilateration(job));
  EXPECT_FALSE(TrilaterationDirection(job));
  EXPECT_EQ(Next(job, "P").found, 0);
  EXPECT_EQ(Place(job, true, A(50), B(50), "P"), 99U);
}

}  // namespace
}  // namespace brenu::testing
