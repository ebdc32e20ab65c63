#include <gtest/gtest.h>

#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

// Station S sees A, B and C; it has not the index 0, for which a success would be reported as -1.
class Reconcile : public ::testing::Test {
 protected:
  std::int32_t AddPair(const std::string& target1, const std::string& target2, ObsData obs1,
                       ObsData obs2, bool reconcile = true, const std::string& station = "S") {
    return AddObsData2(job, job.Index(station), target1.c_str(), target2.c_str(), obs1, obs2,
                       reconcile ? 1 : 0);
  }
  ObsData At(const std::string& target) const { return Stored(job, "S", target); }
  std::int32_t Count() const { return GetObsDataCount(job, job.Index("S")); }
  Job job = Job({{"A"}, {"S"}, {"B"}, {"C"}});
};

TEST_F(Reconcile, NothingStoredOrNotAskedForAddsBothAsTheyAre) {
  EXPECT_EQ(AddPair("A", "B", Direction(10.0), Direction(50.0)), 1);
  EXPECT_EQ(At("A").direction, 10.0);
  EXPECT_EQ(At("B").direction, 50.0);
  EXPECT_EQ(AddPair("A", "C", Direction(20.0), Direction(60.0), false), -1);
  EXPECT_EQ(Count(), 2);
  // The first target stays when the second is refused.
  EXPECT_EQ(AddPair("C", "A", Direction(20.0), Direction(60.0), false), -1);
  EXPECT_EQ(At("C").direction, 20.0);
}

// stored - new is -9 deg 59' 30".
TEST_F(Reconcile, TurnsTheOtherTargetOntoTheStoredOne) {
  job.Observe("S", "A", Direction(10.0010));
  EXPECT_EQ(AddPair("A", "B", Direction(19.5940), Direction(60.3015, 123.4)), 1);
  EXPECT_NEAR(At("B").direction, 50.3045, 1e-9);
  EXPECT_EQ(At("B").distance, 123.4);
  EXPECT_EQ(At("A").direction, 10.0010);
  EXPECT_EQ(AddPair("C", "A", Direction(5.0), Direction(19.5940)), 1);  // the second is stored
  EXPECT_NEAR(At("C").direction, 355.0030, 1e-9);
}

TEST_F(Reconcile, StaysWithinTheCircleAndLeavesReadingsThatAgree) {
  const struct {
    double stored, first, second, turned, tolerance;
  } kCases[] = {{100.0, 0.0, 300.0, 40.0, 1e-9},
                // 0.2" short of the full circle is a whole degree in dd.mmss: 0, not 360.
                {100.0, 0.0, 259.59598, 0.0, 0.0},
                {10.0, 10.000009, 50.123456, 50.123456, 0.0},     // 0.09"
                {10.0, 10.000011, 50.123456, 50.123445, 1e-10}};  // 0.11"
  for (const auto& c : kCases) {
    job.Observe("S", "A", Direction(c.stored));
    EXPECT_EQ(AddPair("A", "B", Direction(c.first), Direction(c.second)), 1);
    EXPECT_NEAR(At("B").direction, c.turned, c.tolerance);
    for (const char* name : {"A", "B"}) DeleteObsData(job, job.Index("S"), name);
  }
}

TEST_F(Reconcile, WithoutReferenceOnlyADistanceIsAdded) {
  job.Observe("S", "A", Distance(100.0));
  EXPECT_EQ(AddPair("A", "B", Direction(10.0), Direction(50.0)), -1);
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(AddPair("A", "B", Direction(10.0), Distance(50.0)), 1);
  EXPECT_EQ(At("B").distance, 50.0);
  // A is stored without direction; the pair it was entered with has one.
  for (const char* name : {"A", "B"}) DeleteObsData(job, job.Index("S"), name);
  EXPECT_EQ(AddPair("A", "B", Distance(100.0), Direction(30.0)), 1);
  EXPECT_EQ(AddPair("A", "C", Direction(10.0), Direction(50.0)), 1);
  EXPECT_NEAR(At("C").direction, 70.0, 1e-9);
}

// Any result of the addition but 0 counts as success: hosts rely on it.
TEST_F(Reconcile, ResultsOfRefusalAndOfStationZero) {
  job.ObserveAll({{"S", {{"A", Direction(10.0)}, {"B", Direction(50.0)}}}});
  EXPECT_EQ(AddPair("A", "B", Direction(11.0), Direction(51.0)), 1);
  EXPECT_EQ(At("B").direction, 50.0);
  EXPECT_EQ(AddPair("A", "no point", Direction(11.0), Direction(51.0)), 1);
  EXPECT_EQ(Count(), 2);

  job.Observe("A", "S", Direction(10.0));
  EXPECT_EQ(AddPair("S", "B", Direction(11.0), Direction(51.0), true, "A"), -1);
  EXPECT_NEAR(Stored(job, "A", "B").direction, 50.0, 1e-9);
}

}  // namespace
}  // namespace brenu::testing
