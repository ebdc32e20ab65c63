// Which network a job is, how it numbers its points, and that it follows the store.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

std::string ApproxName(const Job& job, int32_t number) {
  PointData point{};
  return GetApproxResult(job, number, &point) ? point.name : "none";
}

TEST(NetworkType, FollowsFromTheTypesOfThePoints) {
  const struct {
    std::vector<int32_t> types;
    int32_t expected;
  } cases[] = {{{}, 0},      {{0, 0}, 0},  {{1}, 1},     {{0, 1, 1}, 1}, {{10, 0}, 2},
               {{0, 11}, 3}, {{1, 10}, 3}, {{5, -1}, 0}, {{5, 1}, 1},    {{101, 110}, 0}};
  for (const auto& c : cases) {
    Job job;
    for (const int32_t type : c.types) job.Add(std::to_string(GetPointCount(job)), type);
    EXPECT_EQ(GetNetType(job), c.expected) << ::testing::PrintToString(c.types);
  }
}

TEST(NetworkType, WithoutControlNothingIsComputed) {
  Job job;
  job.AddPoints({{"A"}, {"B", 5}});
  job.Observe("A", "B", {100, 0, 1, 0});
  EXPECT_FALSE(ApproxCalc(job));
  EXPECT_FALSE(LeastSquareAdj(job));
  EXPECT_EQ(ApproxName(job, 0), "none");
  VerticalResult height{};
  EXPECT_FALSE(GetVerticalResult(job, 7, &height));
  EXPECT_EQ(GetPointCount(job), 2U);  // asked of the wrong network, no point is added
}

// A new (its type is none of the list) at (250 sqrt 2, 250 sqrt 2), B plane control, C control of
// both kinds: the plane network numbers B, C, A.
const double kA = 250 * std::sqrt(2.0);
struct MixedJob : Job {
  MixedJob() {
    AddPoints({{"A", 5, 77, 77, 77}, {"B", 10, 0, 0}, {"C", 11, 1000, 0, 50}});
    ObserveAll({{"B", "C", {1000, 10, 4, -1}},
                {"B", "A", {500, 55, 0, -1}},
                {"C", "A", Levelled(std::hypot(1000 - kA, kA), 3)}});
  }
};

TEST(NetworkNumbers, PutKnownPointsFirstAndAreStoreIndicesInLevelling) {
  const MixedJob mixed;
  ASSERT_TRUE(ApproxCalc(mixed));
  const std::string names[] = {"none", "B", "C", "A", "none"};
  for (int32_t i = -1; i < 4; ++i) EXPECT_EQ(ApproxName(mixed, i), names[i + 1]);
  // The height is that of the point stored under the same number: A, B, C.
  const auto height = [&](const char* name) { return ReadApproximate(mixed, name).h; };
  EXPECT_TRUE(Near({height("B"), height("C"), height("A")}, {53, 46, 50}, 0));

  const Job job;
  AddPoint(job, 4, MakePoint("New"));
  AddPoint(job, 9, MakePoint("Mark", 1, 0, 0, 10));
  AddObsData(job, 9, "New", Levelled(100, 1));
  ASSERT_TRUE(ApproxCalc(job));
  EXPECT_EQ(ApproxName(job, 4), "New");
  EXPECT_EQ(ApproxName(job, 9), "Mark");
  EXPECT_EQ(ApproxName(job, 0), "none");
}

TEST(NetworkBuild, EditsBetweenComputationsTakeEffect) {
  const MixedJob job;
  ASSERT_TRUE(LeastSquareAdj(job));
  SetObsData(job, 2, "A", Levelled(std::hypot(1000, 200), 5));
  SetObsData(job, 1, "A", Direction(100, 200));
  SetPoint(job, 2, MakePoint("C", 11, 1000, 0, 60));
  // What is read is still the last computation.
  EXPECT_NEAR(ReadHeight(job, "A").height, 53, 1e-9);
  EXPECT_NEAR(ReadPlane(job, "A").x, kA, 1e-6);
  EXPECT_NEAR(Read(GetLengthResult, job, "B", "A").adjusted, 500, 1e-6);
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(ReadHeight(job, "A").height, 65, 1e-9);
  EXPECT_NEAR(ReadPlane(job, "A").y, 200, 1e-6);

  // A record without height difference leaves the levelling, its distance the plane not.
  SetObsData(job, 2, "A", Distance(1020));
  EXPECT_FALSE(LeastSquareAdj(job));  // A has no height any more
  SetPoint(job, 0, MakePoint("A", 1, 0, 0, 1));
  ASSERT_TRUE(LeastSquareAdj(job));
  EXPECT_NEAR(Read(GetLengthResult, job, "C", "A").apriori, 5.0 + 5.0 * 1020, 1e-9);
  EXPECT_FALSE(FindHeightObs(job, 2, "A"));
}

}  // namespace
}  // namespace brenu::testing
