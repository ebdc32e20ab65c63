#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

const double kRoot2 = std::sqrt(2.0);

// Control A at (300, 400) and B 1000 m north of it; P is new.  Expected places count from A.
struct Baseline : Job {
  Baseline() : Job({{"A", 10, 300, 400}, {"B", 10, 1300, 400}, {"P", 0, 307, 408}}) {}
};

void ExpectAt(const Job& job, const std::string& name, double x, double y) {
  const PointData point = ReadApproximate(job, name);
  EXPECT_TRUE(Near({point.x - 300, point.y - 400}, {x, y}, 1e-9)) << name;
}

TEST(ApproximateCoordinates, ByBearingAndDistanceFromEitherEnd) {
  Baseline job;
  job.Observe("A", "B", Direction(350.3));
  job.Observe("A", "P", Direction(35.3, 100 * kRoot2));  // 45 degrees on
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 100, 100);
  ExpectAt(job, "B", 1000, 0);
  job.Change("A", "P", Direction(35.3));
  EXPECT_FALSE(ApproxCalc(job));
  job.Observe("P", "A", Distance(200 * kRoot2));
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 200, 200);
}

TEST(ApproximateCoordinates, AnObservedAzimuthOrientsTheStation) {
  Baseline job;
  job.Observe("A", "P", Direction(10, 100));
  EXPECT_FALSE(ApproxCalc(job));  // nothing orients A
  // From the other end: 315 + 180 = 495 is the same as 135 degrees.
  job.Observe("P", "A", Azimuth(315));
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", -100 / kRoot2, 100 / kRoot2);
  // From the station itself: goes before that of the other end...
  job.Change("A", "P", {100, 10, 0, 45});
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 100 / kRoot2, 100 / kRoot2);
  // ...and before the coordinates of a known target, here said to be in the east.
  job.Change("A", "P", Direction(20, 100));
  job.Observe("A", "B", {0, 20, 0, 90});
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 0, 100);
}

// P at (250, 433.0127): 60 degrees at A, 30 degrees at B.  The ray from the station has to be the
// steeper one: two rays at 45 and 135 degrees cut at a right angle, yet neither can place the
// point.
TEST(ApproximateCoordinates, ByIntersection) {
  Baseline job;
  job.ObserveAll(
      {{"A", {{"B", Direction(100)}, {"P", Direction(160)}}}, {"B", {{"A", Direction(0)}}}});
  EXPECT_FALSE(ApproxCalc(job));  // no ray from B
  job.Observe("B", "P", Direction(330));
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 250, 250 * std::sqrt(3.0));
  job.Change("A", "P", Direction(145));
  job.Change("B", "P", Direction(315));
  EXPECT_FALSE(ApproxCalc(job));
  // |tan a| - |tan b| is about 2 * 2 * 4.85e-8 for 0.01" at each end.
  job.Change("A", "P", Direction(145.000001));
  EXPECT_FALSE(ApproxCalc(job));  // 0.97e-7
  job.Change("B", "P", Direction(315.000001));
  EXPECT_TRUE(ApproxCalc(job));  // 1.94e-7
  // Without the back sight B's ray has no azimuth.
  job.Change("B", "A", Distance(1000));
  EXPECT_FALSE(ApproxCalc(job));
}

// Z is at (500, 500), oriented on by an azimuth at A; P is seen at 60 degrees from A and at 180
// from Z, which A can only use when Z has a place.  An empty pair more makes Z the station with
// more sights.
TEST(ApproximateCoordinates, ByIntersectionWithAPointPlacedLater) {
  const double toZ = 500 * kRoot2;
  for (const bool hasMoreSights : {false, true}) {
    Baseline job;
    job.Add("Z");
    job.ObserveAll({{"A", {{"B", kNothing}, {"Z", {0, 45, 0, 45}}, {"P", Direction(60)}}},
                    {"B", {{"A", Direction(180)}, {"Z", Direction(135, toZ)}}},
                    {"Z", {{"A", Direction(225)}, {"P", Direction(180)}}}});
    if (hasMoreSights) job.Observe("Z", "B", kNothing);
    ASSERT_TRUE(ApproxCalc(job));
    ExpectAt(job, "P", 500 / std::sqrt(3.0), 500);
    // With a distance A places Z at once; yet the next look comes in the next pass, after B's.
    job.Change("A", "Z", {toZ, 45, 0, 45});
    job.Observe("B", "P", Direction(90, 100));
    ASSERT_TRUE(ApproxCalc(job));
    ExpectAt(job, "P", 1000, 100);
  }
}

// From A over Z, Y and P to C, each 100 m further north by the lengths of the legs; Z's sight to P
// says 50 m less and comes first.  P's azimuth is of no use before P has a place.
TEST(ApproximateCoordinates, PassByPassTheFirstStationInWalkOrderPlacesAPoint) {
  Baseline job;
  for (const char* name : {"C", "Y", "Z"}) job.Add(name);
  job.ObserveAll(
      {{"A", {{"B", Direction(0)}, {"Z", Direction(0, 100)}}},
       {"Z", {{"A", Direction(180)}, {"Y", Direction(0, 100)}, {"P", Direction(0, 150)}}},
       {"Y", {{"Z", Direction(180)}, {"P", Direction(0, 100)}}},
       {"P", {{"Y", Direction(180)}, {"C", {100, 0, 0, 0}}}}});
  ASSERT_TRUE(ApproxCalc(job));
  ExpectAt(job, "Y", 200, 0);
  ExpectAt(job, "P", 250, 0);
  ExpectAt(job, "C", 350, 0);
}

TEST(ApproximateCoordinates, NeedAStationButNoNewPoint) {
  Baseline job;
  job.Change("P", 10, 307, 408);
  EXPECT_FALSE(ApproxCalc(job));
  job.Observe("P", "A", Distance(1));
  EXPECT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 7, 8);
}

TEST(ApproximateCoordinates, OfBothNetworksComeAfterTheHeights) {
  Baseline job;
  job.Change("A", 11, 300, 400, 100);
  job.ObserveAll({{"A", {{"B", {1000, 0, 2, -1}}, {"P", {500, 0, 0, -1}}}}});
  EXPECT_FALSE(ApproxCalc(job));  // no height for P
  ExpectAt(job, "P", 7, 8);
  job.Change("A", "P", {500, 0, 3, -1});
  EXPECT_TRUE(ApproxCalc(job));
  ExpectAt(job, "P", 500, 0);
}

}  // namespace
}  // namespace brenu::testing
