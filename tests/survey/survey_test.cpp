// The additive functions apart from what the findings say.
#include "brenu/survey.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/job.h"

namespace brenu::testing {
namespace {

// P half way between two bench marks, 4 mm of misclosure.
Job Levelling() {
  Job job;
  job.AddPoints({{"A", 1, 0, 0, 100}, {"P"}, {"B", 1, 0, 0, 101}});
  job.ObserveAll({{"A", "P", Levelled(1000, 0.504)}, {"P", "B", Levelled(1000, 0.5)}});
  return job;
}

TEST(Survey, FiguresAreThoseOfTheLastComputation) {
  const Job job = Levelling();
  brenu_figures figures{};
  EXPECT_FALSE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
  ASSERT_TRUE(LeastSquareAdj(job));
  ASSERT_TRUE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
  EXPECT_EQ(figures.controlPoints, 2);
  EXPECT_EQ(figures.newPoints, 1);
  EXPECT_EQ(figures.redundancy, 1);
  EXPECT_NEAR(figures.m0, 0.002 * std::sqrt(2), 1e-12);  // two residuals of 2 mm, one new height
  EXPECT_FALSE(brenu_get_figures(job, BRENU_PLANE, &figures));
  EXPECT_FALSE(brenu_get_figures(job, 0, &figures));
  ASSERT_TRUE(ApproxCalc(job));
  EXPECT_FALSE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
}

std::string WalkedPoints(const Job& job) {
  std::string names;
  for (std::int32_t i = -1; brenu_next_point(job, &i);) names += job.NameAt(i) + ' ';
  return names;
}

TEST(Survey, PointsAreWalkedInTheOrderOfIndices) {
  Job job;
  EXPECT_EQ(WalkedPoints(job), "");
  for (const std::int32_t index : {7, 0, 2147483647, 3}) {
    AddPoint(job, index, MakePoint(std::to_string(index)));
  }
  EXPECT_EQ(WalkedPoints(job), "0 3 7 2147483647 ");
}

TEST(Survey, ObservationsAreWalkedInTheOrderOfNames) {
  const std::string longest(127, 'z');
  Job job;
  job.AddPoints({{longest}, {"b"}, {""}, {"a"}, {"c"}});
  job.ObserveAll({{longest, "a", Distance(6)},
                  {"b", longest, Distance(5)},
                  {"b", "a", Distance(4)},
                  {"a", "c", Distance(3)},
                  {"a", "", Distance(2)},
                  {"", "a", Distance(1)}});
  std::vector<double> walked;
  brenu_pair pair{};
  while (brenu_next_observation(job, &pair)) {
    walked.push_back(pair.observation.distance);
    EXPECT_EQ(Stored(job, pair.station, pair.target).distance, pair.observation.distance);
    if (walked.size() > 3) continue;
    DeleteObsData(job, job.Index(pair.station), pair.target);
    if (walked.size() == 3) DeletePoint(job, job.Index("a"));  // takes pairs before and behind
  }
  EXPECT_EQ(walked, (std::vector<double>{1, 2, 3, 5}));
  pair = {};
  ASSERT_TRUE(brenu_next_observation(job, &pair));
  EXPECT_EQ(std::string(pair.station) + pair.target, "b" + longest);
  std::memset(&pair, 'z', sizeof pair);  // no NUL
  EXPECT_FALSE(brenu_next_observation(job, &pair));
}

TEST(Survey, TextIsCutToItsRoom) {
  const Job job;
  ASSERT_EQ(brenu_read_memory(job, "[PT]\nA,00,x1,,\n", 15), BRENU_PROJECT_FILE);
  char text[8] = "#######";
  EXPECT_EQ(brenu_finding_name(job, 0, 0, text, 2), 1);
  EXPECT_STREQ(text, "X");
  EXPECT_EQ(text[2], '#');
  EXPECT_EQ(brenu_finding_excerpt(job, 0, text, 2), 2);
  EXPECT_STREQ(text, "x");
  EXPECT_EQ(brenu_finding_excerpt(job, 0, text, 1), 2);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(brenu_finding_excerpt(job, 0, nullptr, 0), 2);
  EXPECT_EQ(brenu_finding_excerpt(job, 0, text, -1), -1);
  EXPECT_EQ(brenu_finding_excerpt(job, 0, nullptr, 1), -1);
  EXPECT_EQ(brenu_finding_name(job, 0, 1, text, 8), -1);
  EXPECT_GT(brenu_finding_text(job, 0, text, 8), 8);
  EXPECT_STREQ(text, "line 2:");
  ASSERT_FALSE(ApproxCalc(job));
  EXPECT_EQ(brenu_finding_excerpt(job, 0, text, 8), -1);  // it is not about text
}

// On Windows; elsewhere they are bytes.
TEST(Survey, PathsAreUtf8) {
  const std::u8string name = u8"brenu-\u6d4b\u00fc.txt";
  const auto path = std::filesystem::temp_directory_path() / name;
  std::ofstream(path) << "[PT]\nA,01,,,1\n";
  const std::u8string text = path.u8string();
  EXPECT_EQ(brenu_read_file(Job(), reinterpret_cast<const char*>(text.c_str())),
            BRENU_PROJECT_FILE);
  std::filesystem::remove(path);
}

TEST(Survey, RefusesNullAndWhatIsNotThere) {
  const Job job = Levelling();
  ASSERT_FALSE(NonDirectionAdj(job));
  std::int32_t i = -1;
  double value = 0;
  char text[8];
  brenu_finding finding;
  brenu_figures figures;
  brenu_pair pair{};
  EXPECT_EQ(brenu_finding_count(nullptr), 0);
  EXPECT_EQ(brenu_finding_count(job), 1);
  for (AdjustmentContext* const context :
       {static_cast<AdjustmentContext*>(nullptr), static_cast<AdjustmentContext*>(job)}) {
    const std::int32_t index = context == nullptr ? 0 : 1;
    EXPECT_FALSE(brenu_get_finding(context, index, &finding));
    EXPECT_EQ(brenu_finding_text(context, index, text, 8), -1);
    EXPECT_EQ(brenu_finding_name(context, -index, 0, text, 8), -1);
    EXPECT_EQ(brenu_finding_excerpt(context, index, text, 8), -1);
    EXPECT_FALSE(brenu_finding_value(context, 0, index, &value));
  }
  EXPECT_FALSE(brenu_get_finding(job, 0, nullptr));
  EXPECT_FALSE(brenu_finding_value(job, 0, 0, nullptr));
  EXPECT_FALSE(brenu_get_figures(nullptr, BRENU_HEIGHTS, &figures));
  EXPECT_FALSE(brenu_get_figures(job, BRENU_HEIGHTS, nullptr));
  EXPECT_FALSE(brenu_next_point(nullptr, &i));
  EXPECT_FALSE(brenu_next_point(job, nullptr));
  EXPECT_FALSE(brenu_next_observation(nullptr, &pair));
  EXPECT_FALSE(brenu_next_observation(job, nullptr));
  EXPECT_FALSE(brenu_check_data(nullptr));
  EXPECT_EQ(brenu_read_file(nullptr, "x"), BRENU_NO_FILE);
  EXPECT_EQ(brenu_read_memory(nullptr, "x", 1), BRENU_NO_FILE);
  for (const bool fromFile : {true, false}) {
    EXPECT_EQ(fromFile ? brenu_read_file(job, nullptr) : brenu_read_memory(job, nullptr, 1),
              BRENU_NO_FILE);
    ASSERT_TRUE(brenu_get_finding(job, 0, &finding));
    EXPECT_EQ(finding.code, BRENU_NULL_ARGUMENT);
  }
  EXPECT_EQ(brenu_read_memory(job, nullptr, 0), BRENU_NO_FILE);
  ASSERT_TRUE(brenu_get_finding(job, 0, &finding));
  EXPECT_EQ(finding.code, BRENU_FILE_EMPTY);
  EXPECT_STREQ(brenu_code_id(BRENU_FILE_EMPTY), "file-empty");
  EXPECT_STREQ(brenu_code_id(-1), "nothing");
}

}  // namespace
}  // namespace brenu::testing
