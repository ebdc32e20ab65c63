// Which network a job is, and how it numbers its points.
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
  const Job job({{"A"}, {"B", 5}}, {{"A", {{"B", {100, 0, 1, 0}}}}});
  EXPECT_FALSE(ApproxCalc(job));
  EXPECT_FALSE(LeastSquareAdj(job));
  EXPECT_EQ(ApproxName(job, 0), "none");
  VerticalResult height{};
  EXPECT_FALSE(GetVerticalResult(job, 7, &height));
  EXPECT_EQ(GetPointCount(job), 2U);  // asked of the wrong network, no point is added
}

TEST(NetworkNumbers, PutKnownPointsFirstAndAreStoreIndicesInLevelling) {
  // A is new (its type is none of the list), B plane control, C control of both kinds.
  const double a = 250 * std::sqrt(2.0);
  const Job both({{"A", 5, 77, 77, 77}, {"B", 10, 0, 0}, {"C", 11, 1000, 0, 50}},
                 {{"B", {{"C", {1000, 10, 4, -1}}, {"A", {500, 55, 0, -1}}}},
                  {"C", {{"A", Levelled(std::hypot(1000 - a, a), 3)}}}});
  ASSERT_TRUE(ApproxCalc(both));
  const std::string names[] = {"none", "B", "C", "A", "none"};
  for (int32_t i = -1; i < 4; ++i) EXPECT_EQ(ApproxName(both, i), names[i + 1]);
  // The height is that of the point stored under the same number: A, B, C.
  const auto height = [&](const char* name) { return ReadApproximate(both, name).h; };
  EXPECT_TRUE(Near({height("B"), height("C"), height("A")}, {53, 46, 50}, 0));

  const Job level;
  AddPoint(level, 4, MakePoint("New"));
  AddPoint(level, 9, MakePoint("Mark", 1, 0, 0, 10));
  AddObsData(level, 9, "New", Levelled(100, 1));
  ASSERT_TRUE(ApproxCalc(level));
  EXPECT_EQ(ApproxName(level, 4), "New");
  EXPECT_EQ(ApproxName(level, 9), "Mark");
  EXPECT_EQ(ApproxName(level, 0), "none");
}

}  // namespace
}  // namespace brenu::testing
