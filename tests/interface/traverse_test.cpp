#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kSecond = kPi / 648000.0;  // radians

const AdjParam kUnoriented = Errors(2.5, 0.005, 5e-6, 1);

struct Row {
  double angle, angleCorrection, azimuth, length, dx, dy, dxCorrection, dyCorrection, x, y;
  double angleMisclosure, lengthMisclosure;
  std::int32_t relativePrecision;
};

std::optional<Row> FindRow(const Job& job, const std::string& name) {
  Row r{};
  const bool found =
      GetTraverseResult(job, job.Index(name), &r.angle, &r.angleCorrection, &r.azimuth, &r.length,
                        &r.dx, &r.dy, &r.dxCorrection, &r.dyCorrection, &r.x, &r.y,
                        &r.angleMisclosure, &r.lengthMisclosure, &r.relativePrecision) != 0;
  return found ? std::optional(r) : std::nullopt;
}
Row RowOf(const Job& job, const std::string& name) { return FindRow(job, name).value(); }

//               E --- FS    North is up.  The true angles are 90 and 270 degrees, the sides 100,
//               |           200 and 100 m.  Each of the four angles is measured 10" too large, the
//         P --- Q           first side 20 mm and the second 40 mm too long.
//         |
//   BS -- S
class Connecting : public ::testing::Test {
 protected:
  void Forget(const std::string& station, const std::string& target) {
    DeleteObsData(job, job.Index(station), target.c_str());
  }
  Job job = Job({{"S", 10, 1000, 1000},
                 {"E", 10, 1200, 1200},
                 {"P"},
                 {"Q"},
                 {"BS", 10, 1000, 900},
                 {"FS", 10, 1200, 1300}},
                {{"S", {{"BS", Direction(10.0)}, {"P", Direction(100.0010, 100.03)}}},
                 {"P", {{"S", Direction(350.0, 100.01)}, {"Q", Direction(260.0010)}}},  // 100.02 m
                 {"Q", {{"P", Direction(0.0, 200.04)}, {"E", Direction(90.0010)}}},
                 {"E", {{"Q", Direction(0.0, 100.0)}, {"FS", Direction(270.0010)}}},
                 {"E", {{"BS", kNothing}}}});  // no reading that could orient E
};

TEST_F(Connecting, RecordAndTable) {
  const auto records = Closures(job);
  ASSERT_EQ(Routes(records), Strings{"S - P - Q - E"});
  const CloseError& r = records[0];
  EXPECT_NEAR(r.angleMisclosure, 40.0, 1e-6);  // carried minus known
  EXPECT_DOUBLE_EQ(r.angleLimit, 10.0);        // 5 sqrt(4)
  // With 10" taken off each angle the azimuths are right.
  const double fx = 0.02;
  const double fy = 0.04;
  const double length = 400.06;
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(fx, fy), 1e-8);
  EXPECT_NEAR(r.routeLength, length, 1e-9);
  EXPECT_EQ(r.relativePrecision, 8945);  // 400.06 / 0.0447214 = 8945.6
  EXPECT_EQ(r.heightMisclosure, 0.0);

  const Row s = RowOf(job, "S");
  const double turned = std::fmod(s.azimuth + 180.0, 360.0);  // 0 from either side
  EXPECT_TRUE(Near({s.angle, turned, s.length, s.x, s.y}, {90.001, 180, 100.02, 1e3, 1e3}, 1e-8));
  EXPECT_TRUE(Near({s.dx, s.dy, s.dxCorrection, s.dyCorrection},
                   {100.02, 0, -fx * 100.02 / length, -fy * 100.02 / length}, 1e-7));
  EXPECT_TRUE(Near({s.angleMisclosure, s.lengthMisclosure}, {40.0, 0.0447214}, 1e-6));
  EXPECT_EQ(s.relativePrecision, 8945);

  const Row p = RowOf(job, "P");
  EXPECT_TRUE(Near({p.angle, p.azimuth, p.x, p.y},
                   {270.001, 90, 1100.02 - fx * 100.02 / length, 1000 - fy * 100.02 / length},
                   1e-7));
  const Row q = RowOf(job, "Q");
  EXPECT_TRUE(
      Near({q.x, q.y}, {1100.02 - fx * 300.06 / length, 1200.04 - fy * 300.06 / length}, 1e-7));
  for (const Row& row : {s, p, q}) EXPECT_NEAR(row.angleCorrection, -10.0, 1e-6);
  const Row e = RowOf(job, "E");  // the azimuth is that to the fore sight
  EXPECT_TRUE(Near({e.angle, e.angleCorrection, e.azimuth}, {270.001, -10, 90}, 1e-6));
  EXPECT_TRUE(Near({e.length, e.x, e.y}, {0, 1200, 1200}, 0));

  job.Change("E", "FS", Direction(269.5850));  // 80" less: 40" short in all
  EXPECT_NEAR(Closures(job).at(0).angleMisclosure, -40.0, 1e-6);
  EXPECT_NEAR(RowOf(job, "Q").angleCorrection, 10.0, 1e-6);
}

// The misclosures are 40" and 44.7 mm in 400.06 m; 5000 gives 80 mm and 10000 gives 40 mm.  The
// tolerance of the angles is 3 MO sqrt(4), their limit `angleLimit` sqrt(4).
TEST_F(Connecting, LimitsAndFlags) {
  const struct {
    double mo;
    std::int32_t angleLimit, grade, n;
    bool angleWithin, bothWithin;
  } kCases[] = {{6.7, 19, 7, 5000, false, true},    {6.6, 21, 7, 5000, true, false},
                {6.7, 21, 6, 10000, true, false},   {6.7, 21, 8, 2000, true, true},
                {6.7, 19, 2, 100000, false, false}, {6.7, 19, 3, 55000, false, false},
                {6.7, 19, 4, 35000, false, false},  {6.7, 19, 5, 15000, false, false},
                {6.7, 19, 9, 5000, false, true}};
  for (const auto& c : kCases) {
    SetAdjParam(job, {c.mo, 5, 5, 4, 20, c.grade, c.angleLimit, 3, 0});
    const CloseError r = Closures(job).at(0);
    EXPECT_EQ(r.angleWithinLimit, c.angleWithin) << c.mo << ' ' << c.grade;
    EXPECT_EQ(r.heightWithinLimit, c.bothWithin) << c.mo << ' ' << c.grade;
    EXPECT_EQ(r.mark, c.angleWithin);  // of the angles alone
    EXPECT_EQ(GetCloseErrorMark(job), c.angleWithin ? 1 : 0);
    EXPECT_NEAR(r.lengthLimit, 400.06 / c.n, 1e-9);
  }
}

// Azimuths of the sides 0 + 10", 90 + 20", 0 + 30", or 0 - 30", 90 - 20", 0 - 10" from the end;
// cosines as 1.
TEST_F(Connecting, OrientedAtOneEndOnly) {
  Forget("E", "FS");
  CloseError r = Closures(job).at(0);
  EXPECT_EQ(r.angleMisclosure, 0.0);
  EXPECT_EQ(r.angleLimit, 0.0);
  EXPECT_TRUE(r.angleWithinLimit);
  const double turn = 200.04 * std::sin(20 * kSecond);
  const double fy = 0.04 + 100.02 * std::sin(10 * kSecond) + 100.0 * std::sin(30 * kSecond);
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(0.02 - turn, fy), 5e-6);
  const Row q = RowOf(job, "Q");
  const Row e = RowOf(job, "E");
  EXPECT_TRUE(Near({q.azimuth, q.angleCorrection, e.angle, e.azimuth}, {0.003, 0, -1, -1}, 1e-8));

  job.Observe("E", "FS", Direction(270.0010));
  Forget("S", "BS");
  r = Closures(job).at(0);
  EXPECT_EQ(r.angleMisclosure, 0.0);
  const double back = 0.04 - 100.02 * std::sin(30 * kSecond) - 100.0 * std::sin(10 * kSecond);
  EXPECT_NEAR(r.lengthMisclosure, std::hypot(0.02 + turn, back), 5e-6);
  EXPECT_TRUE(Near({RowOf(job, "S").angle, RowOf(job, "S").azimuth}, {-1.0, 359.5930}, 1e-8));

  Forget("E", "FS");
  EXPECT_FALSE(CalculateCloseError(job));  // no approximate coordinates
  job.Change("S", "P", {100.03, 100.0010, 0.0, 0.0});
  EXPECT_EQ(Routes(Closures(job)), Strings{});
  EXPECT_FALSE(FindRow(job, "P"));
}

TEST_F(Connecting, WhichChainsAreTraverses) {
  const Strings chain{"S - P - Q - E"};
  job.Change("P", "Q", kNothing);  // no angle at P
  EXPECT_EQ(Routes(Closures(job)), Strings{});
  job.Change("P", "Q", Direction(260.0010));
  job.Change("Q", "P", Direction(0.0));  // a side less
  EXPECT_EQ(Routes(Closures(job)), Strings{});
  job.Change("Q", "P", Direction(0.0, 200.04));
  // The base between the control points is the shortest way, but no traverse.
  job.Observe("S", "E", Direction(145.0, 282.84));
  EXPECT_EQ(Routes(Closures(job)), chain);
  // Over R the way is 10 mm longer.
  job.Add("R");
  job.ObserveAll({{"R", {{"S", Direction(0.0, 300.0)}, {"E", Direction(100.0, 100.07)}}},
                  {"S", {{"R", kNothing}}},
                  {"E", {{"R", Direction(180.0)}}}});
  EXPECT_EQ(Routes(Closures(job)), chain);
  EXPECT_FALSE(FindRow(job, "R"));
  EXPECT_FALSE(FindRow(job, "no point"));
}

// ---- Without orientation ----

TEST_F(Connecting, WithoutOrientationTheChainIsTurnedOntoItsEnds) {
  job.Change("P", "Q", Direction(260.0));
  job.Change("Q", "E", Direction(90.0));  // right angles now; the back sights are not used
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
  EXPECT_TRUE(Near({p.x, p.y, p.lengthMisclosure, p.angleMisclosure}, {x, y, f, 0}, 1e-8));
  EXPECT_EQ(p.relativePrecision, static_cast<int>(400.06 / f));
  EXPECT_EQ(RowOf(job, "S").angle, -1.0);
  const PlaneResult adjusted = ReadPlane(job, "P");
  const PointData approximate = ReadApproximate(job, "P");
  EXPECT_TRUE(Near({adjusted.x, adjusted.mx, approximate.y}, {x, 0, y}, 1e-8));
}

TEST_F(Connecting, WithoutOrientationEveryPointWithSidesMustBeReached) {
  SetAdjParam(job, kUnoriented);
  job.Add("R");
  job.Observe("P", "R", Direction(10.0));  // sighted only
  EXPECT_TRUE(NonDirectionAdj(job));
  job.Change("P", "R", Direction(10.0, 50.0));
  EXPECT_FALSE(NonDirectionAdj(job));
  Forget("P", "R");
  job.Change("Q", "P", Direction(0.0));  // the side of the chain is missing
  EXPECT_FALSE(NonDirectionAdj(job));
}

// ---- Closed traverses ----

// A square of 100 m with A in the south west; every inner angle is measured 5" too large, the side
// from A to the east 30 mm too long.  `east` and `north` are the neighbours of A.
Job Square(const std::string& east, const std::string& north) {
  return Job({{"A", 10, 1000, 1000}, {"X", 10, 900, 1000}, {north}, {east}, {"C"}},
             {{"A",
               {{north, Direction(10.0, 100.0)},
                {east, Direction(100.0005, 100.03)},
                {"X", Direction(190.0)}}},
              {north, {{"C", Direction(20.0, 100.0)}, {"A", Direction(110.0005)}}},
              {"C", {{east, Direction(30.0, 100.0)}, {north, Direction(120.0005)}}},
              {east, {{"A", Direction(40.0)}, {"C", Direction(130.0005)}}}});
}

TEST(ClosedTraverse, SumOfInnerAnglesWhicheverWayRound) {
  // Named so that the loop is found anticlockwise, then clockwise.
  for (const bool clockwise : {false, true}) {
    const Job job = clockwise ? Square("B", "D") : Square("D", "B");
    const auto records = Closures(job);
    ASSERT_EQ(Routes(records), Strings{"A - D - C - B - A"});
    const CloseError& r = records[0];
    EXPECT_TRUE(Near({r.angleMisclosure, r.angleLimit, r.lengthMisclosure, r.routeLength},
                     {20, 10, 0.03, 400.03}, 1e-6));
    EXPECT_EQ(r.relativePrecision, 13334);  // 400.03 / 0.03
    // Clockwise the angle from back sight to fore sight is the outer one, 5" too small.
    const Row a = RowOf(job, "A");
    EXPECT_NEAR(a.angle, clockwise ? 269.5955 : 90.0005, 1e-8);
    EXPECT_NEAR(a.angleCorrection, clockwise ? 5.0 : -5.0, 1e-6);
    EXPECT_EQ(a.x, 1000.0);
    if (!clockwise) {
      // An observed azimuth in place of the sight to X: the approximate places orient the loop.
      job.Change("A", "B", {100, 10, 0, 0});
      job.Change("A", "X", kNothing);
      ASSERT_TRUE(CalculateCloseError(job));
      EXPECT_NEAR(RowOf(job, "A").azimuth, a.azimuth, 1e-6);
      continue;
    }
    // The side to the north has the azimuth 0; the last side, too long to the west, gives fy =
    // -30 mm.
    const Row d = RowOf(job, "D");
    EXPECT_TRUE(Near({d.azimuth, d.x, d.y}, {90.0, 1100.0, 1000.0 + 0.03 * 100.0 / 400.03}, 1e-7));
    EXPECT_NEAR(RowOf(job, "B").y, 1100.0 + 0.03 * 300.0 / 400.03, 1e-7);
  }
}

TEST(ClosedTraverse, EachSideStartsOneLoopAtMostAndAllAnglesAreNeeded) {
  Job job = Square("D", "B");
  job.ObserveAll({{"A", {{"C", Direction(55.0, 141.42)}}}, {"C", {{"A", Direction(75.0)}}}});
  // A - B, then A - D; all other sides lie on these loops.
  EXPECT_EQ(Routes(Closures(job)), (Strings{"A - C - B - A", "A - C - D - A"}));
  job.Change("B", "C", kNothing);
  job.Change("D", "C", kNothing);
  EXPECT_EQ(Routes(Closures(job)), Strings{});
}

}  // namespace
}  // namespace brenu::testing
