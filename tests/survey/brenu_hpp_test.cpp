// The C++ header: what it adds to the functions it calls.
#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "brenu/brenu.hpp"
#include "support/network_text.h"

namespace brenu::testing {
namespace {

Context Levelling() {
  Context job;
  EXPECT_EQ(job.ReadText(kLevelling), BRENU_PROJECT_FILE);
  return job;
}

// Why the call failed: code, line and first name.
template <typename Call>
std::string CauseOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    EXPECT_EQ(error.what(), error.Cause().sentence);
    return error.Id() + '@' + std::to_string(error.Line()) + ' ' +
           (error.Names().empty() ? "" : error.Names().front());
  }
  return "nothing";
}

TEST(BrenuHpp, ResultsAreThereOrNot) {
  Context job = Levelling();
  EXPECT_FALSE(job.Height(2));
  EXPECT_FALSE(job.Figures(BRENU_HEIGHTS));
  job.Adjust();
  EXPECT_NEAR(job.Height(2).value().height, 100.502, 1e-9);
  EXPECT_NEAR(job.HeightDifference(0, "P").value().residual, -0.002, 1e-9);
  EXPECT_EQ(job.Figures(BRENU_HEIGHTS).value().redundancy, 1);
  EXPECT_FALSE(job.Plane(2));
  EXPECT_FALSE(job.Direction(0, "P"));
  job.ComputeClosures();
  EXPECT_EQ(Text(job.Closure(0).value().route).size(), std::string("A - P - B").size());
  // Asking for no point adds none.
  EXPECT_FALSE(job.Height(9));
  EXPECT_FALSE(job.HeightDifference(9, "P"));
  EXPECT_FALSE(job.IndexOf("nobody"));
  EXPECT_EQ(job.PointCount(), 3U);
}

TEST(BrenuHpp, FailuresSayWhy) {
  Context job = Levelling();
  EXPECT_EQ(CauseOf([&] { job.Add(3, MakePoint("A")); }), "name-taken@0 A");
  EXPECT_EQ(CauseOf([&] { job.AdjustUnoriented(); }), "format-is-not@0 ");
  EXPECT_EQ(CauseOf([&] { job.SaveProject("/"); }), "file-not-written@0 /");
  EXPECT_EQ(CauseOf([&] { Context().Read("/no/such"); }), "file-missing@0 ");
  EXPECT_EQ(CauseOf([&] { Context().ReadText("[PT]\nA,01,,,1\nA,00,,,\n"); }), "name-taken@3 A");
  const Context moved = std::move(job);
  EXPECT_THROW(job.Adjust(), std::logic_error);  // NOLINT
}

TEST(BrenuHpp, DoubtsAreNoFailures) {
  Context job;
  job.ReadText("[PT]\nA,02,,,100\n");
  EXPECT_EQ(job.Findings().at(0).excerpt, "02");
  job.Add(1, MakePoint("P", 10, std::numeric_limits<double>::infinity()));
  EXPECT_TRUE(job.Findings().empty());
  EXPECT_EQ(job.CheckData().at(0).code, BRENU_COORDINATE_NOT_FINITE);
}

// Where the function in brenu.h gives -1 for a success and 1 for a refusal.
TEST(BrenuHpp, PairsAreAddedOrRefused) {
  Context job;
  job.ReadText("[PT]\nA,00,,,\nB,00,,,\nC,00,,,\n\n[OBS]\nA,B,10,,,\n");
  const ObsData reading = {0, 10, 0, -1};
  job.AddPair(0, "B", "C", reading, reading, true);
  EXPECT_EQ(job.ObservationCount(0), 2);
  EXPECT_EQ(CauseOf([&] { job.AddPair(0, "B", "D", reading, reading, true); }),
            "target-unknown@0 D");
}

TEST(BrenuHpp, WhatIsStoredIsWalked) {
  const Context job = Levelling();
  std::ostringstream walked;
  for (const auto& [index, point] : job.Points()) walked << index << Text(point.name);
  for (const auto& [station, target, observation] : job.Observations()) {
    walked << ' ' << station << target << observation.heightDiff;
  }
  EXPECT_EQ(walked.str(), "0A1B2P AP0.504 BP-0.5");
}

TEST(BrenuHpp, NamesFillTheirField) {
  const std::string longest(127, 'n');
  EXPECT_EQ(Text(MakePoint(longest + "x").name), longest);
  char full[3] = {'a', 'b', 'c'};  // no NUL
  EXPECT_EQ(Text(full), "abc");
}

// By the rules of textbooks unless it is made for the others; 40 mm are in one of two lines.
TEST(BrenuHpp, RulesAndDataSnooping) {
  Context job = Levelling();
  const ObsData wrong = {1000, -1, 0.54, -1};
  job.Set(0, "P", wrong);
  job.Snoop();
  const TakenOut out = job.AllTakenOut().at(0);
  EXPECT_EQ(out.observation.target, "P");
  EXPECT_EQ(out.observation.kind, BRENU_HEIGHT_DIFFERENCE);
  EXPECT_EQ(out.alternatives.size(), 1U);
  EXPECT_EQ(job.UntestedCount(BRENU_HEIGHTS), 1);
  job.Adjust();
  EXPECT_TRUE(job.AllTakenOut().empty());
  EXPECT_NEAR(job.ControlFit(1).value().h, 0.04, 1e-6);
  Context classic(BRENU_CLASSIC);
  classic.ReadText(kLevelling);
  classic.Snoop(0.5);
  classic.Adjust();
  EXPECT_FALSE(classic.ControlFit(1));
}

// P 40 m to the right of A - B, B east of A: south.
TEST(BrenuHpp, PlacingByTrilateration) {
  Context job(BRENU_CLASSIC);
  job.ReadText(
      "[PARAM]\nformat:3\n\n[PT]\nA,10,100,100,\nB,10,100,160,\nP,00,,,\n\n"
      "[OBS]\nA,P,,50,,\nB,P,,50,,\n");
  job.JudgePlacing();
  const auto choice = job.NextPlacement("P").value();
  const bool right = std::string(choice.first.name) == "A";
  EXPECT_EQ(job.Place("P", choice, right), 0U);
  EXPECT_EQ(job.Place("P", choice, right), 0U);  // not below
  job.FinishPlacing();
  job.Adjust();
  EXPECT_NEAR(job.Plane(2).value().x, 60, 1e-6);
  EXPECT_EQ(CauseOf([&] { Levelling().Place("P", choice, right); }), "format-needs-plane@0 ");
}

}  // namespace
}  // namespace brenu::testing
