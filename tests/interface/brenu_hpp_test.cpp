// The C++ header: what it adds to the functions it calls.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "brenu/brenu.hpp"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

// P half way between two bench marks, 4 mm of misclosure.
Context Levelling() {
  Context job;
  EXPECT_TRUE(job.Add(0, MakePoint("A", 1, 0, 0, 100)));
  EXPECT_TRUE(job.Add(1, MakePoint("P")));
  EXPECT_TRUE(job.Add(2, MakePoint("B", 1, 0, 0, 101)));
  ObsData line = NoObservation();
  line.distance = 1000;
  line.heightDiff = 0.504;
  EXPECT_TRUE(job.Add(0, "P", line));
  line.heightDiff = 0.5;
  EXPECT_TRUE(job.Add(1, "B", line));
  return job;
}

TEST(BrenuHpp, ResultsAreThereOrNot) {
  Context job = Levelling();
  EXPECT_FALSE(job.Height(1));
  ASSERT_TRUE(job.Adjust());
  ASSERT_TRUE(job.Height(1));
  EXPECT_NEAR(job.Height(1)->height, 100.502, 1e-9);
  EXPECT_NEAR(job.HeightDifference(0, "P").value().residual, -0.002, 1e-9);
  EXPECT_FALSE(job.Plane(1));
  EXPECT_FALSE(job.Direction(0, "P"));
  EXPECT_FALSE(job.Closure(0));
  ASSERT_TRUE(job.ComputeClosures());
  EXPECT_EQ(Text(job.Closure(0).value().route).size(), std::string("A - P - B").size());
  EXPECT_TRUE(job.ClosuresPass());
  // Asking for no point adds none.
  EXPECT_FALSE(job.Point(-1));
  EXPECT_FALSE(job.Point(9));
  EXPECT_FALSE(job.Height(9));
  EXPECT_FALSE(job.HeightDifference(9, "P"));
  EXPECT_FALSE(job.IndexOf("nobody"));
  EXPECT_FALSE(job.Place("P", {{"A", 0, 0, 1}, {"B", 0, 1, 1}, {}}, true));  // no plane network
  EXPECT_EQ(job.PointCount(), 3U);
}

TEST(BrenuHpp, NamesFillTheirField) {
  const std::string longest(127, 'n');
  EXPECT_EQ(Text(MakePoint(longest + "x").name), longest);
  char full[3] = {'a', 'b', 'c'};  // no NUL
  EXPECT_EQ(Text(full), "abc");
}

TEST(BrenuHpp, AContextIsMovedWithItsJobAndFilesComeBack) {
  Context first = Levelling();
  Context job = std::move(first);
  EXPECT_EQ(job.PointCount(), 3U);
  EXPECT_EQ(job.IndexOf("B"), 2);
  const TempFile file;
  ASSERT_TRUE(job.SaveProject(file.Path()));
  Context again;
  ASSERT_TRUE(again.OpenProject(file.Path()));
  EXPECT_EQ(again.Observation(1, "B").value().heightDiff, 0.5);
  EXPECT_FALSE(Context().OpenProject(std::string(file.Path()) + ".missing"));
}

// P 40 m to the right of A - B, B east of A: south.
TEST(BrenuHpp, PlacingByTrilateration) {
  Context job;
  AdjParam param = job.Param();
  param.format = 3;
  job.SetParam(param);
  ASSERT_TRUE(job.Add(0, MakePoint("A", 10, 100, 100)));
  ASSERT_TRUE(job.Add(1, MakePoint("B", 10, 100, 160)));
  ASSERT_TRUE(job.Add(2, MakePoint("P")));
  ObsData side = NoObservation();
  side.distance = 50;
  ASSERT_TRUE(job.Add(0, "P", side));
  ASSERT_TRUE(job.Add(1, "P", side));
  ASSERT_TRUE(job.JudgePlacing());
  ASSERT_TRUE(job.PreparePlacing());
  const auto choice = job.NextPlacement("P");
  ASSERT_TRUE(choice);
  EXPECT_NE(choice->text.find('P'), std::string::npos);
  const bool right = std::string(choice->first.name) == "A";
  EXPECT_EQ(job.Place("P", *choice, right), 0U);
  ASSERT_TRUE(job.FinishPlacing());
  ASSERT_TRUE(job.Adjust());
  EXPECT_NEAR(job.Plane(2).value().x, 60, 1e-6);
  EXPECT_NEAR(job.Plane(2).value().y, 130, 1e-6);
}

}  // namespace
}  // namespace brenu::testing
