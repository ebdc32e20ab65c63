// Adjustments of survey.h by either set of rules and what belongs to them.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "brenu/brenu.hpp"
#include "support/job.h"
#include "support/null_pointers.h"

namespace brenu::testing {
namespace {

// Lines of 1 km between points; A, B and C are bench marks.
Job Lines(const std::vector<Job::Page>& pages, double c = 100.0) {
  return Job({{"A", 1, 0, 0, 100}, {"B", 1, 0, 0, 100}, {"C", 1, 0, 0, c}, {"P"}, {"Q"}, {"R"}},
             pages);
}
ObsData Rise(double metres) { return Levelled(1000, metres); }

VerticalResult HeightOf(const Job& job, const std::string& name) {
  VerticalResult result{};
  EXPECT_TRUE(GetVerticalResult(job, job.Index(name), &result)) << name;
  return result;
}

// A loop of four lines with a misclosure of 4 mm: residuals of 1 mm, redundancy 1, 3 new heights.
TEST(SurveyAdjust, EachSetOfRulesHasItsStandardError) {
  const Job job = Lines({{"A", {{"P", Rise(1.001)}}},
                         {"P", {{"Q", Rise(0.001)}}},
                         {"Q", {{"R", Rise(0.001)}}},
                         {"R", {{"A", Rise(-0.999)}}}});
  brenu_figures figures{};
  brenu_options options{};
  for (const auto& [rules, m0] :
       {std::pair(BRENU_TEXTBOOK, 2.0), {BRENU_CLASSIC, 2.0 / std::sqrt(3)}}) {
    options.rules = rules;
    ASSERT_TRUE(brenu_adjust(job, &options));
    ASSERT_TRUE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
    EXPECT_NEAR(figures.m0, 0.001 * m0, 1e-12);
    EXPECT_EQ(figures.redundancy, 1);
    EXPECT_NEAR(HeightOf(job, "P").sigma, figures.m0 * std::sqrt(0.75), 1e-9);
  }
  ASSERT_TRUE(LeastSquareAdj(job));  // whatever the options were
  ASSERT_TRUE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
  EXPECT_NEAR(figures.m0, 0.002 / std::sqrt(3), 1e-12);
}

// Of four lines to P one is 50 mm too high.  Its residual is 3/4 of that, with the cofactor 3/4;
// the a-posteriori error of unit weight has three redundant observations.
TEST(SurveyAdjust, TestValuesAreThoseOfBaardaAndPope) {
  const Job job = Lines({{"A", {{"P", Rise(0.05)}}},
                         {"B", {{"P", Rise(1e-9)}}},
                         {"P", {{"A", Rise(1e-9)}, {"B", Rise(1e-9)}}}});
  brenu_options options{};
  brenu_taken_out out{};
  for (const auto& [test, value] :
       {std::pair(BRENU_W_TEST, 50 * std::sqrt(0.75)), {BRENU_TAU_TEST, std::sqrt(3)}}) {
    options.test = test;
    ASSERT_TRUE(brenu_adjust(job, &options));
    ASSERT_EQ(brenu_taken_out_count(job), 1);
    ASSERT_TRUE(brenu_get_taken_out(job, 0, &out));
    EXPECT_EQ(std::string(out.observation.station) + out.observation.target, "AP");
    EXPECT_EQ(out.observation.kind, BRENU_HEIGHT_DIFFERENCE);
    EXPECT_NEAR(out.testValue, value, 1e-6);
    EXPECT_NEAR(out.error, 0.05, 1e-6);
    EXPECT_EQ(out.alternatives, 0);
    EXPECT_NEAR(HeightOf(job, "P").height, 100, 1e-6);
  }
  options = {BRENU_TEXTBOOK, BRENU_W_TEST, 0, 50, 0};
  ASSERT_TRUE(brenu_adjust(job, &options));
  EXPECT_EQ(brenu_taken_out_count(job), 0);
  // 2 cm per km: nothing unusual.
  options = {BRENU_TEXTBOOK, BRENU_W_TEST, 0, 0, 0.02};
  ASSERT_TRUE(brenu_adjust(job, &options));
  EXPECT_EQ(brenu_taken_out_count(job), 0);
  EXPECT_NE(FindingsOf(job).back().id, "level-sigma-contradicted");
  options = {};
  ASSERT_TRUE(brenu_adjust(job, &options));
  const Finding note = FindingsOf(job).back();
  EXPECT_EQ(note.id, "level-sigma-contradicted");
  EXPECT_TRUE(Near(note.values, {25, 1}, 1e-6));
}

// A - P - B does not close: either line may be wrong.  R hangs on one line, which nothing tests.
TEST(SurveyAdjust, WhatCannotBeToldApartIsNamed) {
  const Job job = Lines({{"A", {{"P", Rise(0.05)}}}, {"P", {{"B", Rise(0.01)}, {"R", Rise(1)}}}});
  const brenu_options options = {BRENU_TEXTBOOK, BRENU_W_TEST, 0, 0, 0};
  ASSERT_TRUE(brenu_adjust(job, &options));
  EXPECT_EQ(brenu_taken_out_count(job), 1);
  brenu_taken_out out{};
  brenu_observation other{};
  ASSERT_TRUE(brenu_get_taken_out(job, 0, &out));
  ASSERT_EQ(out.alternatives, 1);
  ASSERT_TRUE(brenu_get_alternative(job, 0, 0, &other));
  EXPECT_NE(std::string(out.observation.station), other.station);
  EXPECT_EQ(brenu_untested_count(job, BRENU_HEIGHTS), 2);  // with the line that is left of the two
  EXPECT_FALSE(brenu_get_alternative(job, 0, 1, &other));
  EXPECT_FALSE(brenu_get_alternative(job, 1, 0, &other));
  brenu_figures figures{};
  ASSERT_TRUE(brenu_get_figures(job, BRENU_HEIGHTS, &figures));
  EXPECT_EQ(figures.leftOut, 1);  // Q
}

// C is 0.1 m too high for what A and B say of P: cofactors 1/2 and 1 together.
TEST(SurveyAdjust, ControlIsComparedWithTheOthers) {
  const Job job =
      Lines({{"A", {{"P", Rise(1)}}}, {"B", {{"P", Rise(1)}}}, {"C", {{"P", Rise(1)}}}}, 100.1);
  const brenu_options options{};
  ASSERT_TRUE(brenu_adjust(job, &options));
  brenu_control_fit fit{};
  ASSERT_TRUE(brenu_get_control_fit(job, job.Index("C"), &fit));
  EXPECT_NEAR(fit.h, -0.1, 1e-6);
  EXPECT_NEAR(fit.wh, -100 / std::sqrt(1.5), 1e-3);
  EXPECT_TRUE(std::isnan(fit.x) && std::isnan(fit.wy));
  EXPECT_FALSE(brenu_get_control_fit(job, job.Index("P"), &fit));
  EXPECT_FALSE(brenu_get_control_fit(job, 9, &fit));
}

TEST(SurveyAdjust, OptionsThatCannotBeAreRefused) {
  const Job job = Lines({{"A", {{"P", Rise(1)}}}, {"P", {{"B", Rise(-1)}}}});
  for (const brenu_options& options : std::vector<brenu_options>{{2, 0, 0, 0, 0},
                                                                 {0, 3, 0, 0, 0},
                                                                 {1, 2, 0, 0, 0},
                                                                 {0, 1, 1, 0, 0},
                                                                 {0, 1, 0, -1, 0},
                                                                 {1, 1, 0, 3, 0},
                                                                 {0, 0, 0, 0, std::nan("")}}) {
    EXPECT_FALSE(brenu_adjust(job, &options));
    EXPECT_EQ(FindingsOf(job).at(0).id, "option-refused");
  }
  brenu_options options{};
  ExpectRefusesNull(false, brenu_adjust, job, &options);
  ExpectRefusesNull(false, brenu_approximate, job, &options);
  ExpectRefusesNull(false, brenu_compute_closures, job, &options);
  ASSERT_TRUE(brenu_adjust(job, &options));
  brenu_control_fit fit;
  ExpectRefusesNull(false, brenu_get_control_fit, job, 0, &fit);
  SetAdjParam(job, Errors(2, 0.005, 0, 1));
  options.test = BRENU_W_TEST;
  EXPECT_FALSE(brenu_adjust(job, &options));
  EXPECT_EQ(FindingsOf(job).at(0).id, "format-is-not");
  SetAdjParam(job, Errors(2, 0));
  job.Change("C", 11, 1, 1, 1);
  EXPECT_FALSE(brenu_adjust(job, &options));
  EXPECT_EQ(FindingsOf(job).at(0).id, "distance-error-not-positive");
}

}  // namespace
}  // namespace brenu::testing
