#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

using ::testing::ElementsAre;

constexpr double kPi = std::numbers::pi;
constexpr double kSecond = kPi / 648000.0;  // radians

constexpr AdjParam kUnoriented = {2.5, 0.005, 5e-6, 4, 20, 4, 5, 3, 1};

struct Row {
  double angle, angleCorrection, azimuth, length, dx, dy, dxCorrection, dyCorrection, x, y;
  double angleMisclosure, lengthMisclosure;
  std::int32_t relativePrecision;
};

constexpr Row kUntouched = {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7};

// The outputs as they are left, and whether there is a row.
std::pair<Row, std::int32_t> Ask(const Job& job, const std::string& name) {
  Row r = kUntouched;
  const std::int32_t found =
      GetTraverseResult(job, job.Index(name), &r.angle, &r.angleCorrection, &r.azimuth, &r.length,
                        &r.dx, &r.dy, &r.dxCorrection, &r.dyCorrection, &r.x, &r.y,
                        &r.angleMisclosure, &r.lengthMisclosure, &r.relativePrecision);
  return {r, found};
}

Row RowOf(const Job& job, const std::string& name) {
  const auto [row, found] = Ask(job, name);
  EXPECT_EQ(found, 1) << name;
  return row;
}

std::vector<CloseError> Closures(const Job& job) {
  EXPECT_TRUE(CalculateCloseError(job));
  std::vector<CloseError> records(static_cast<std::size_t>(GetCloseErrorCount(job)));
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_TRUE(GetCloseError(job, static_cast<std::int32_t>(i), &records[i]));
  }
  return records;
}

std::vector<std::string> Names(const std::vector<CloseError>& records) {
  std::vector<std::string> routes;
  routes.reserve(records.size());
  for (const CloseError& record : records) routes.emplace_back(record.route);
  return routes;
}

std::vector<std::string> Routes(const Job& job) { return Names(Closures(job)); }

//               E --- FS    North is up.  The true angles are 90 and 270 degrees, the sides 100,
//               |           200 and 100 m.  Each of the four angles is measured 10" too large, the
//         P --- Q           first side 20 mm and the second 40 mm too long.
//         |
//   BS -- S
class Connecting : public ::testing::Test {
 protected:
  Connecting() {
    job.Add("S", 10, 1000, 1000);
    job.Add("E", 10, 1200, 1200);
    job.Add("BS", 10, 1000, 900);
    job.Add("FS", 10, 1200, 1300);
    job.Add("P");
    job.Add("Q");
    job.Observe("S", "BS", Direction(10.0));
    job.Observe("S", "P", Direction(100.0010, 100.03));
    job.Observe("P", "S", Direction(350.0, 100.01));  // 100.02 in the mean
    job.Observe("P", "Q", Direction(260.0010));
    job.Observe("Q", "P", Direction(0.0, 200.04));
    job.Observe("Q", "E", Direction(90.0010));
    job.Observe("E", "Q", Direction(0.0, 100.0));
    job.Observe("E", "FS", Direction(270.0010));
  }
  void Forget(const std::string& station, const std::string& target) {
    DeleteObsData(job, job.Index(station), target.c_str());
  }
  void Change(const std::string& station, const std::string& target, ObsData obs) {
    EXPECT_NE(SetObsData(job, job.Index(station), target.c_str(), obs), -1);
  }
  Job job;
};

TEST_F(Connecting, Record) {
  const auto records = Closures(job);
  ASSERT_THAT(Names(records), ElementsAre("S - P - Q - E"));
  const CloseError& r = records[0];
  EXPECT_NEAR(r.angleMisclosure, 40.0, 1e-6);  // carried minus known
  EXPECT_DOUBLE_EQ(r.angleLimit, 10.0);        // 5 sqrt(4)
  // With 10" taken off each angle the azimuths are right: f = (20 mm, 40 mm).
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(0.02, 0.04), 1e-8);
  EXPECT_NEAR(r.routeLength, 400.06, 1e-9);
  EXPECT_EQ(r.relativePrecision, 8945);  // 400.06 / 0.0447214 = 8945.6
  EXPECT_EQ(r.heightMisclosure, 0.0);
}

TEST_F(Connecting, Table) {
  ASSERT_TRUE(CalculateCloseError(job));
  const double fx = 0.02;
  const double fy = 0.04;
  const double length = 400.06;
  const Row s = RowOf(job, "S");
  EXPECT_NEAR(s.angle, 90.0010, 1e-9);
  EXPECT_NEAR(s.angleCorrection, -10.0, 1e-6);
  EXPECT_NEAR(std::fmod(s.azimuth + 180.0, 360.0), 180.0, 1e-8);  // 0 from either side
  EXPECT_NEAR(s.length, 100.02, 1e-9);
  EXPECT_NEAR(s.dx, 100.02, 1e-8);
  EXPECT_NEAR(s.dy, 0.0, 1e-7);
  EXPECT_NEAR(s.dxCorrection, -fx * 100.02 / length, 1e-9);
  EXPECT_NEAR(s.dyCorrection, -fy * 100.02 / length, 1e-9);
  EXPECT_EQ(s.x, 1000.0);
  EXPECT_EQ(s.y, 1000.0);
  EXPECT_NEAR(s.angleMisclosure, 40.0, 1e-6);
  EXPECT_NEAR(s.lengthMisclosure, 0.0447214, 1e-7);
  EXPECT_EQ(s.relativePrecision, 8945);

  const Row p = RowOf(job, "P");
  EXPECT_NEAR(p.angle, 270.0010, 1e-9);
  EXPECT_NEAR(p.azimuth, 90.0, 1e-8);
  EXPECT_NEAR(p.x, 1100.02 - fx * 100.02 / length, 1e-7);
  EXPECT_NEAR(p.y, 1000.00 - fy * 100.02 / length, 1e-7);
  const Row q = RowOf(job, "Q");
  EXPECT_NEAR(q.x, 1100.02 - fx * 300.06 / length, 1e-7);
  EXPECT_NEAR(q.y, 1200.04 - fy * 300.06 / length, 1e-7);
  const Row e = RowOf(job, "E");
  EXPECT_NEAR(e.angle, 270.0010, 1e-9);
  EXPECT_NEAR(e.azimuth, 90.0, 1e-12);  // to the fore sight
  EXPECT_EQ(e.length, 0.0);
  EXPECT_EQ(e.x, 1200.0);
  EXPECT_EQ(e.y, 1200.0);

  EXPECT_NEAR(s.angleCorrection + p.angleCorrection + q.angleCorrection + e.angleCorrection, -40.0,
              1e-6);
  EXPECT_NEAR(s.dxCorrection + p.dxCorrection + q.dxCorrection, -fx, 1e-8);
  EXPECT_NEAR(s.dyCorrection + p.dyCorrection + q.dyCorrection, -fy, 1e-8);
}

TEST_F(Connecting, NegativeMisclosure) {
  Change("E", "FS", Direction(269.5850));  // 80" less: 40" short in all
  EXPECT_NEAR(Closures(job).at(0).angleMisclosure, -40.0, 1e-6);
  EXPECT_NEAR(RowOf(job, "Q").angleCorrection, 10.0, 1e-6);
}

TEST_F(Connecting, LimitsAndFlags) {
  struct Case {
    double mo;
    std::int32_t angleLimit, grade;
    bool angleWithin, bothWithin;
  };
  // The misclosures are 40" and 44.7 mm in 400.06 m; 5000 gives 80 mm and 10000 gives 40 mm.  The
  // tolerance of the angles is 3 MO sqrt(4), their limit angleLimit sqrt(4).
  for (const Case& c : {Case{6.7, 19, 7, false, true}, Case{6.6, 21, 7, true, false},
                        Case{6.7, 21, 6, true, false}, Case{6.7, 21, 8, true, true}}) {
    SetAdjParam(job, {c.mo, 5, 5, 4, 20, c.grade, c.angleLimit, 3, 0});
    const CloseError r = Closures(job).at(0);
    EXPECT_EQ(r.angleWithinLimit, c.angleWithin) << c.mo << ' ' << c.grade;
    EXPECT_EQ(r.heightWithinLimit, c.bothWithin) << c.mo << ' ' << c.grade;
    EXPECT_EQ(r.mark, c.angleWithin);  // of the angles alone
    EXPECT_EQ(GetCloseErrorMark(job), c.angleWithin ? 1 : 0);
  }
  const std::vector<std::pair<std::int32_t, double>> grades = {
      {2, 100000}, {3, 55000}, {4, 35000}, {5, 15000}, {6, 10000}, {7, 5000}, {8, 2000}, {9, 5000}};
  for (const auto& [grade, n] : grades) {
    SetAdjParam(job, {2.5, 5, 5, 4, 20, grade, 5, 3, 0});
    EXPECT_NEAR(Closures(job).at(0).lengthLimit, 400.06 / n, 1e-9) << grade;
  }
}

TEST_F(Connecting, OrientedAtTheStartOnly) {
  Forget("E", "FS");
  const CloseError r = Closures(job).at(0);
  EXPECT_EQ(r.angleMisclosure, 0.0);
  EXPECT_EQ(r.angleLimit, 0.0);
  EXPECT_TRUE(r.angleWithinLimit);
  // Azimuths 0 + 10", 90 + 20", 0 + 30".
  const double fx = 0.02 - 200.04 * std::sin(20 * kSecond);
  const double fy = 0.04 + 100.02 * std::sin(10 * kSecond) + 100.0 * std::sin(30 * kSecond);
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(fx, fy), 5e-6);  // cosines as 1
  EXPECT_NEAR(RowOf(job, "Q").azimuth, 0.0030, 1e-8);
  EXPECT_EQ(RowOf(job, "Q").angleCorrection, 0.0);
  EXPECT_EQ(RowOf(job, "E").angle, -1.0);
  EXPECT_EQ(RowOf(job, "E").azimuth, -1.0);
}

TEST_F(Connecting, OrientedAtTheEndOnly) {
  Forget("S", "BS");
  const CloseError r = Closures(job).at(0);
  EXPECT_EQ(r.angleMisclosure, 0.0);
  // Backwards: 0 - 10", 90 - 20", 0 - 30".
  const double fx = 0.02 + 200.04 * std::sin(20 * kSecond);
  const double fy = 0.04 - 100.02 * std::sin(30 * kSecond) - 100.0 * std::sin(10 * kSecond);
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(fx, fy), 5e-6);
  EXPECT_EQ(RowOf(job, "S").angle, -1.0);
  EXPECT_NEAR(RowOf(job, "S").azimuth, 359.5930, 1e-8);
  EXPECT_NEAR(RowOf(job, "E").x, 1200.0, 0.0);
}

TEST_F(Connecting, NoOrientationGivesNoRecord) {
  Forget("S", "BS");
  Forget("E", "FS");
  EXPECT_FALSE(CalculateCloseError(job));  // no approximate coordinates
  Change("S", "P", {100.03, 100.0010, 0.0, 0.0});
  EXPECT_TRUE(CalculateCloseError(job));
  EXPECT_EQ(GetCloseErrorCount(job), 0);
  const auto [row, found] = Ask(job, "P");
  EXPECT_EQ(found, 0);
  EXPECT_EQ(row.x, kUntouched.x);
  EXPECT_EQ(row.relativePrecision, kUntouched.relativePrecision);
}

TEST_F(Connecting, MissingReadingOrSideBreaksTheChain) {
  Change("P", "Q", {0.0, -1.0, 0.0, -1.0});
  EXPECT_THAT(Routes(job), ElementsAre());
  Change("P", "Q", Direction(260.0010));
  EXPECT_THAT(Routes(job), ElementsAre("S - P - Q - E"));
  Change("Q", "P", Direction(0.0));
  EXPECT_THAT(Routes(job), ElementsAre());
}

// The side between the control points is the shortest way, but no traverse.
TEST_F(Connecting, MeasuredBaseHidesNoTraverse) {
  job.Observe("S", "E", Direction(145.0, 282.84));
  EXPECT_THAT(Routes(job), ElementsAre("S - P - Q - E"));
}

TEST_F(Connecting, ShortestChainCounts) {
  job.Add("R");
  job.Observe("R", "S", Direction(0.0, 300.0));
  job.Observe("R", "E", Direction(100.0, 100.07));  // 10 mm longer over R
  job.Observe("S", "R", {0.0, -1.0, 0.0, -1.0});
  job.Observe("E", "R", Direction(180.0));
  EXPECT_THAT(Routes(job), ElementsAre("S - P - Q - E"));
  EXPECT_EQ(Ask(job, "R").second, 0);
  EXPECT_EQ(Ask(job, "no point").second, 0);
}

TEST_F(Connecting, PointOnSeveralTraversesIsOnTheFirst) {
  job.Add("G", 10, 1100, 900);
  job.Observe("P", "G", Direction(80.0, 100.5));
  const auto records = Closures(job);
  ASSERT_THAT(Names(records), ElementsAre("S - P - Q - E", "S - P - G", "E - Q - P - G"));
  EXPECT_EQ(RowOf(job, "P").lengthMisclosure, records[0].lengthMisclosure);
  EXPECT_EQ(RowOf(job, "G").lengthMisclosure, records[1].lengthMisclosure);
}

TEST_F(Connecting, RowsSurviveTheAdjustment) {
  SetAdjParam(job, {2.5, 0.005, 5e-6, 4, 20, 4, 5, 3, 0});
  ASSERT_TRUE(CalculateCloseError(job));
  const double x = RowOf(job, "P").x;
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_EQ(RowOf(job, "P").x, x);
}

TEST_F(Connecting, LevellingRecordsComeFirst) {
  for (const char* name : {"S", "E", "BS", "FS"}) {
    PointData point{};
    GetPoint(job, job.Index(name), &point);
    point.type = 11;
    point.h = 10.0;
    SetPoint(job, job.Index(name), point);
  }
  Change("S", "P", {100.03, 100.0010, 1.001, -1.0});
  Change("Q", "P", {200.04, 0.0, -1.5, -1.0});
  Change("E", "Q", {100.00, 0.0, 2.5, -1.0});
  const auto records = Closures(job);
  ASSERT_THAT(Names(records), ElementsAre("E - Q - P - S", "S - P - Q - E"));
  EXPECT_NEAR(records[0].heightMisclosure, -1.0, 1e-6);  // 1.001 + 1.5 - 2.5 = 1 mm up
  EXPECT_EQ(records[0].angleMisclosure, 0.0);
  EXPECT_NEAR(records[1].angleMisclosure, 40.0, 1e-6);
}

// ---- Without orientation ----

TEST_F(Connecting, WithoutOrientationTheChainIsTurnedOntoItsEnds) {
  Change("P", "Q", Direction(260.0));
  Change("Q", "E", Direction(90.0));  // right angles now; the back sights are not used
  EXPECT_FALSE(NonDirectionAdj(job));
  SetAdjParam(job, kUnoriented);
  ASSERT_TRUE(NonDirectionAdj(job));
  // Laid out from azimuth 0 the chain ends at (200.02, 200.04), in truth at (200, 200).
  const double turn = kPi / 4 - std::atan2(200.04, 200.02);
  const double f = std::hypot(200.02, 200.04) - std::hypot(200.0, 200.0);
  const double share = f * std::sqrt(0.5) * 100.02 / 400.06;
  const double x = 1000.0 + 100.02 * std::cos(turn) - share;
  const double y = 1000.0 + 100.02 * std::sin(turn) - share;
  const Row p = RowOf(job, "P");
  EXPECT_NEAR(p.x, x, 1e-8);
  EXPECT_NEAR(p.y, y, 1e-8);
  EXPECT_NEAR(p.lengthMisclosure, f, 1e-8);
  EXPECT_EQ(p.relativePrecision, static_cast<int>(400.06 / f));
  EXPECT_EQ(p.angleMisclosure, 0.0);
  EXPECT_EQ(RowOf(job, "S").angle, -1.0);

  PlaneResult adjusted{};
  ASSERT_TRUE(GetPlaneResult(job, job.Index("P"), &adjusted));
  EXPECT_NEAR(adjusted.x, x, 1e-8);
  EXPECT_EQ(adjusted.mx, 0.0);
  PointData approximate{};
  ASSERT_TRUE(GetApproxResult(job, 4, &approximate));  // after the four control points
  EXPECT_STREQ(approximate.name, "P");
  EXPECT_NEAR(approximate.y, y, 1e-8);
}

TEST_F(Connecting, WithoutOrientationEveryPointWithSidesMustBeReached) {
  SetAdjParam(job, kUnoriented);
  job.Add("R");
  job.Observe("P", "R", Direction(10.0));  // sighted only
  EXPECT_TRUE(NonDirectionAdj(job));
  Change("P", "R", Direction(10.0, 50.0));
  EXPECT_FALSE(NonDirectionAdj(job));
  Forget("P", "R");
  Change("Q", "P", Direction(0.0));  // the side of the chain is missing
  EXPECT_FALSE(NonDirectionAdj(job));
}

// ---- Closed traverses ----

// A square of 100 m with A in the south west; every inner angle is measured 5" too large, the side
// from A to the east 30 mm too long.  `east` and `north` are the neighbours of A.
void AddSquare(Job& job, const std::string& east, const std::string& north) {
  for (const std::string& name : {north, east, std::string("C")}) job.Add(name);
  job.Observe("A", north, Direction(10.0, 100.0));
  job.Observe("A", east, Direction(100.0005, 100.03));
  job.Observe(north, "C", Direction(20.0, 100.0));
  job.Observe(north, "A", Direction(110.0005));
  job.Observe("C", east, Direction(30.0, 100.0));
  job.Observe("C", north, Direction(120.0005));
  job.Observe(east, "A", Direction(40.0));
  job.Observe(east, "C", Direction(130.0005));
}

Job ControlledSquare(const std::string& east, const std::string& north) {
  Job job;
  job.Add("A", 10, 1000, 1000);
  job.Add("X", 10, 900, 1000);
  AddSquare(job, east, north);
  job.Observe("A", "X", Direction(190.0));
  return job;
}

TEST(ClosedTraverse, SumOfInnerAnglesWhicheverWayRound) {
  // Named so that the loop is found anticlockwise, then clockwise.
  for (const bool clockwise : {false, true}) {
    const Job job = clockwise ? ControlledSquare("B", "D") : ControlledSquare("D", "B");
    const auto records = Closures(job);
    ASSERT_THAT(Names(records), ElementsAre("A - D - C - B - A"));
    const CloseError& r = records[0];
    EXPECT_NEAR(r.angleMisclosure, 20.0, 1e-6);
    EXPECT_DOUBLE_EQ(r.angleLimit, 10.0);
    EXPECT_NEAR(r.lengthMisclosure, 0.03, 1e-7);
    EXPECT_NEAR(r.routeLength, 400.03, 1e-9);
    EXPECT_EQ(r.relativePrecision, 13334);  // 400.03 / 0.03
    // Clockwise the angle from back sight to fore sight is the outer one, 5" too small.
    const Row a = RowOf(job, "A");
    EXPECT_NEAR(a.angle, clockwise ? 269.5955 : 90.0005, 1e-8);
    EXPECT_NEAR(a.angleCorrection, clockwise ? 5.0 : -5.0, 1e-6);
    EXPECT_EQ(a.x, 1000.0);
  }
}

// By the back sight the side to the north has the azimuth 0; clockwise the last side, 30 mm too
// long to the west, gives fy = -30 mm.
TEST(ClosedTraverse, Coordinates) {
  const Job job = ControlledSquare("B", "D");
  ASSERT_TRUE(CalculateCloseError(job));
  const Row d = RowOf(job, "D");
  EXPECT_NEAR(d.azimuth, 90.0, 1e-8);
  EXPECT_NEAR(d.x, 1100.0, 1e-7);
  EXPECT_NEAR(d.y, 1000.0 + 0.03 * 100.0 / 400.03, 1e-7);
  EXPECT_NEAR(RowOf(job, "B").y, 1100.0 + 0.03 * 300.0 / 400.03, 1e-7);
}

// The loop hangs on a tie to the control point and has its azimuth from approximate coordinates.
TEST(ClosedTraverse, WithoutControlPoint) {
  Job job;
  job.Add("K", 10, 1000, 900);
  job.Add("X", 10, 900, 900);
  job.Add("A");
  AddSquare(job, "D", "B");
  job.Observe("K", "X", Direction(0.0));
  job.Observe("K", "A", Direction(270.0, 100.0));
  job.Observe("A", "K", Direction(280.0));
  const auto records = Closures(job);
  ASSERT_THAT(Names(records), ElementsAre("A - D - C - B - A"));
  EXPECT_NEAR(records[0].angleMisclosure, 20.0, 1e-6);
  EXPECT_NEAR(RowOf(job, "A").x, 1000.0, 1e-7);
  EXPECT_NEAR(RowOf(job, "A").y, 1000.0, 1e-7);
  EXPECT_EQ(Ask(job, "K").second, 0);
}

TEST(ClosedTraverse, EachSideStartsOneLoopAtMost) {
  Job job = ControlledSquare("D", "B");
  job.Observe("A", "C", Direction(55.0, 141.42));
  job.Observe("C", "A", Direction(75.0));
  // A - B, then A - D; all other sides lie on these loops.
  EXPECT_THAT(Routes(job), ElementsAre("A - C - B - A", "A - C - D - A"));
}

TEST(ClosedTraverse, NeedsAllAngles) {
  const Job job = ControlledSquare("D", "B");
  SetObsData(job, job.Index("C"), "B", {0.0, -1.0, 0.0, -1.0});
  EXPECT_THAT(Routes(job), ElementsAre());
}

}  // namespace
}  // namespace brenu::testing
