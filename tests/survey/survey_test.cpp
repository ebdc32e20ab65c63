// The additive functions apart from what the findings say.
#include "brenu/survey.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/job.h"
#include "support/network_text.h"
#include "support/null_pointers.h"

namespace brenu::testing {
namespace {

Job Levelling() {
  Job job;
  EXPECT_NE(brenu_read_memory(job, kLevelling.data(), kLevelling.size()), BRENU_NO_FILE);
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

// Nor has it precisions to report.
TEST(Survey, ApproximateCoordinatesAreNoAdjustment) {
  const Job job({{"A", 10, 100, 100, 0}, {"B", 10, 200, 100, 0}, {"P"}},
                {{"P", {{"A", Distance(100)}, {"B", Distance(100)}}},
                 {"A", {{"B", Direction(0)}, {"P", Direction(60)}}}});
  const brenu_options options{};
  brenu_figures figures{};
  ASSERT_TRUE(brenu_approximate(job, &options));
  EXPECT_FALSE(brenu_get_figures(job, BRENU_PLANE, &figures));
  EXPECT_NE(brenu_report(job, BRENU_REPORT_JSON, BRENU_ENGLISH, nullptr), nullptr);
  ASSERT_TRUE(LeastSquareAdj(job));
  ASSERT_TRUE(InitializeDataTrilateration(job));  // begins anew
  EXPECT_FALSE(brenu_get_figures(job, BRENU_PLANE, &figures));
}

TEST(Survey, PointsAreWalkedInTheOrderOfIndices) {
  const Job job;
  for (const std::int32_t index : {7, 0, 2147483647, 3}) {
    AddPoint(job, index, MakePoint(std::to_string(index)));
  }
  std::vector<std::int32_t> walked;
  for (std::int32_t i = -1; brenu_next_point(job, &i);) walked.push_back(i);
  EXPECT_EQ(walked, (std::vector<std::int32_t>{0, 3, 7, 2147483647}));
}

TEST(Survey, ObservationsAreWalkedInTheOrderOfNames) {
  const std::string longest(127, 'z');
  const Job job({{longest}, {"b"}, {""}, {"a"}},
                {{longest, {{"a", Distance(5)}}},
                 {"b", {{longest, Distance(4)}, {"a", Distance(3)}}},
                 {"a", {{"", Distance(2)}}},
                 {"", {{"a", Distance(1)}}}});
  std::vector<double> walked;
  brenu_pair pair{};
  while (brenu_next_observation(job, &pair)) {
    walked.push_back(pair.observation.distance);
    EXPECT_EQ(Stored(job, pair.station, pair.target).distance, walked.back());
    if (walked.back() == 1) DeleteObsData(job, job.Index(""), "a");
    if (walked.back() == 2) DeletePoint(job, job.Index("a"));  // takes pairs before and behind
  }
  EXPECT_EQ(walked, (std::vector<double>{1, 2, 4}));
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
  ExpectRefusesNull(0, brenu_finding_count, job);
  brenu_finding finding;
  ExpectRefusesNull(false, brenu_get_finding, job, 0, &finding);
  EXPECT_FALSE(brenu_get_finding(job, 1, &finding));
  double value = 0;
  ExpectRefusesNull(false, brenu_finding_value, job, 0, 0, &value);
  EXPECT_FALSE(brenu_finding_value(job, 0, 1, &value));
  char text[8];
  ExpectRefusesNull(-1, brenu_finding_text, job, 0, text, 8);
  EXPECT_EQ(brenu_finding_text(job, -1, text, 8), -1);
  EXPECT_EQ(brenu_finding_text(nullptr, 0, nullptr, 0), -1);
  ExpectRefusesNull(false, brenu_check_data, job);
  ASSERT_TRUE(LeastSquareAdj(job));
  brenu_figures figures;
  ExpectRefusesNull(false, brenu_get_figures, job, BRENU_HEIGHTS, &figures);
  std::int32_t index = -1;
  ExpectRefusesNull(false, brenu_next_point, job, &index);
  brenu_pair pair{};
  ExpectRefusesNull(false, brenu_next_observation, job, &pair);
  ExpectRefusesNull(BRENU_NO_FILE, brenu_read_memory, Job(), "[PT]\n", 5);
  EXPECT_EQ(brenu_read_file(nullptr, "x"), BRENU_NO_FILE);
  EXPECT_EQ(brenu_read_file(job, nullptr), BRENU_NO_FILE);
  ASSERT_TRUE(brenu_get_finding(job, 0, &finding));
  EXPECT_EQ(finding.code, BRENU_NULL_ARGUMENT);
  EXPECT_EQ(brenu_read_memory(job, nullptr, 0), BRENU_NO_FILE);
  ASSERT_TRUE(brenu_get_finding(job, 0, &finding));
  EXPECT_EQ(finding.code, BRENU_FILE_EMPTY);
  EXPECT_STREQ(brenu_code_id(-1), "nothing");
}

}  // namespace
}  // namespace brenu::testing
