// The statistics of networks that are computed by hand, and the verdict on slips of the pen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/angles.h"
#include "core/distributions.h"
#include "report/make_report.h"
#include "report/statistics.h"
#include "review/computation.h"
#include "review/data_check.h"
#include "review/load.h"
#include "review/sentence.h"
#include "support/network_text.h"

namespace brenu {
namespace {

using ::testing::ElementsAre;
using testing::With;

Report ReportOn(const std::string& text, double levelSigma = 0.001,
                std::optional<double> alpha = std::nullopt) {
  AdjustmentContext context;
  context.rules = {RuleSet::kTextbook, levelSigma};
  LineReader file{std::string_view(text)};
  Findings found = Load(context, file).outcome.findings;
  for (Finding& finding : CheckData(context)) found.push_back(std::move(finding));
  static_cast<void>(ComputeClosures(context));  // what fails, the adjustment says
  for (Finding& finding : Compute(context, alpha).findings) found.push_back(std::move(finding));
  return MakeReport(context, "net.txt", std::move(found));
}

std::string Example(const std::string& name) {
  std::ifstream file(std::string(BRENU_EXAMPLES) + '/' + name + ".txt");
  return {std::istreambuf_iterator<char>(file), {}};
}

// X and Y of a point the other way round.
std::string Exchanged(std::string text, const std::string& name) {
  const std::size_t x = text.find('\n' + name + ",10,") + name.size() + 5;
  const std::size_t y = text.find(',', x) + 1;
  const std::size_t end = text.find(',', y);
  return text.replace(x, end - x, text.substr(y, end - y) + ',' + text.substr(x, y - 1 - x));
}

// Four distances to P along the axes: each coordinate is the mean of two, which check each other.
const char* const kCross =
    "[PARAM]\nMO:2\nMS:0.005\nMR:0\n\n[PT]\nN,10,1100,1000,\nE,10,1000,1100,\nS,10,900,1000,\n"
    "W,10,1000,900,\nP,00,,,\n\n[OBS]\nP,N,,{N},,\nP,E,,100.004,,\nP,S,,100.004,,\nP,W,,100.004,,"
    "\n";

TEST(Statistics, OfACrossOfDistances) {
  const Report report = ReportOn(With(kCross, "{N}", "100.008"));
  const PlaneReport& plane = *report.plane;
  // Residuals -6, -6 along X and -4, -4 along Y: [pvv] = 2 (1.44 + 0.64), but for the curvature.
  ASSERT_TRUE(plane.test);
  EXPECT_NEAR(plane.test->statistic, 4.16, 2e-5);
  EXPECT_EQ(plane.redundancy, 2);
  EXPECT_NEAR(plane.m0, std::sqrt(2.08), 1e-5);
  // Chi-square of 2: -2 ln of the tail.
  EXPECT_NEAR(plane.test->lower, -2.0 * std::log(0.975), 1e-9);
  EXPECT_NEAR(plane.test->upper, -2.0 * std::log(0.025), 1e-9);
  EXPECT_TRUE(plane.test->passed);
  const PlanePointRow& p = plane.points.back();
  EXPECT_NEAR(p.x, 1000.0 - 0.002, 1e-7);
  EXPECT_NEAR(p.y, 1000.0, 1e-7);
  EXPECT_NEAR(p.mx, plane.m0 * 0.005 / std::sqrt(2.0), 1e-8);
  EXPECT_NEAR(p.ellipse.f, p.mx, 1e-8);
  EXPECT_NEAR(plane.factor95, std::sqrt(2.0 * 19.0), 1e-8);  // F(0.95; 2, 2) = 19
  ASSERT_EQ(plane.observations.size(), 4U);
  for (const ObservationRow& row : plane.observations) {
    const bool alongX = row.to == "N" || row.to == "S";
    EXPECT_NEAR(row.redundancy, 0.5, 1e-6);
    EXPECT_NEAR(row.residual, alongX ? -0.006 : -0.004, 1e-7);
    EXPECT_NEAR(row.w, row.residual / (0.005 * std::sqrt(0.5)), 1e-4);
    EXPECT_NEAR(row.tau, row.w / plane.m0, 1e-9);
    EXPECT_NEAR(row.error, alongX ? 0.012 : 0.008, 1e-6);
    EXPECT_NEAR(row.mde, 4.13 * 0.005 * std::sqrt(2.0), 1e-6);
    EXPECT_NEAR(row.effect, row.mde / 2.0, 1e-7);  // half of an error moves P
    EXPECT_NEAR(row.sigmaAdjusted, plane.m0 * 0.005 / std::sqrt(2.0), 1e-8);
  }
  // Each of four tests at 1 - 0.95^(1/4) = 1.2741 %; r = 2: tau^2 = 2 t^2 / (1 + t^2), t with one
  // degree of freedom.
  EXPECT_NEAR(std::erf(plane.criticalW / std::sqrt(2.0)), std::pow(0.95, 0.25), 1e-12);
  EXPECT_NEAR(plane.criticalTau, std::sqrt(2.0) * std::sin(kPi / 2.0 * std::pow(0.95, 0.25)), 1e-9);
  EXPECT_TRUE(report.verdict.passed);
}

TEST(Statistics, WithoutRedundancyTheyAreAPriori) {
  const Report report = ReportOn("[PT]\nA,01,,,100\nP,00,,,\n\n[OBS]\nA,P,,4000,0.5,\n", 0.0015);
  const HeightsReport& heights = *report.heights;
  EXPECT_FALSE(heights.isScaled);
  EXPECT_FALSE(heights.test);
  EXPECT_NEAR(heights.points[1].mh, 0.003, 1e-9);
  EXPECT_NEAR(heights.points[1].mh95, 0.003 * 1.959963985, 1e-9);
  const ObservationRow& row = heights.observations.front();
  EXPECT_EQ(row.checked, Checked::kNot);
  EXPECT_TRUE(std::isnan(row.w) && std::isnan(row.tau) && std::isnan(row.mde));
  ASSERT_FALSE(report.verdict.passed);
  EXPECT_EQ(report.verdict.reasons.front().code, BRENU_NOTHING_REDUNDANT);
}

TEST(Statistics, LikelyMisreadings) {
  const auto code = [](ObsKind kind, double observed, double error, double sigma) {
    return LikelyMisreading(kind, observed, error, sigma).code;
  };
  EXPECT_EQ(code(ObsKind::kDirection, 0.0, 3601.5, 2.0), BRENU_LIKE_DEGREES);
  EXPECT_EQ(code(ObsKind::kDirection, 0.0, -598.0, 2.0), BRENU_LIKE_MINUTES);
  EXPECT_EQ(code(ObsKind::kDirection, 0.0, 648003.0, 2.0), BRENU_LIKE_OTHER_FACE);
  EXPECT_EQ(code(ObsKind::kDirection, 0.0, 41.0, 2.0), BRENU_NOTHING);
  EXPECT_EQ(code(ObsKind::kDistance, 500.0, 10.003, 0.005), BRENU_LIKE_METRES);
  EXPECT_EQ(code(ObsKind::kDistance, 500.0, 500.0 * (1 - 0.3048), 0.005), BRENU_LIKE_FEET);
  EXPECT_EQ(code(ObsKind::kDistance, 500.0, 10.07, 0.005), BRENU_NOTHING);
}

// The reason that comes first, by code and names.
struct Slip {
  std::string text;
  Code code;
  std::vector<std::string> names;
};

TEST(Verdict, NamesTheCulprit) {
  const std::string net = With(Example("triangulation"), "Lvl2:4", "Lvl2:5");
  const Report clean = ReportOn(net);
  EXPECT_TRUE(clean.verdict.passed) << SentenceOf(clean.verdict.reasons.front());
  std::string allExchanged = net;
  for (const char* const name : {"K1", "K2", "K3", "K4"}) {
    allExchanged = Exchanged(allExchanged, name);
  }
  const Slip slips[] = {
      {With(net, "\nT10,T05,177.", "\nT10,T05,178."), BRENU_OBSERVATION_SUSPECT, {"T10", "T05"}},
      {With(net, "5344081.115", "5345081.115"), BRENU_CONTROL_DOES_NOT_FIT, {"K1", "X"}},
      {With(net, "5344081.115", "5344081.215"), BRENU_CONTROL_DOES_NOT_FIT, {"K1", "X"}},
      {Exchanged(net, "K1"), BRENU_CONTROL_FAR_AWAY, {"K1", "X"}},
      {allExchanged, BRENU_AXES_EXCHANGED, {"K1", "K2"}},
      {With(net, ",1235.5310,", ",4053.58,"), BRENU_OBSERVATION_SUSPECT, {"T05", "T09"}},
      {With(net, "T01,00,,,", "T01,00,,,\nZ,00,,,") + "T10,Z,12.3,500,,\n",
       BRENU_POINTS_NOT_CHECKED,
       {"Z"}},
  };
  for (const auto& [text, code, names] : slips) {
    const Verdict verdict = ReportOn(text).verdict;
    ASSERT_FALSE(verdict.reasons.empty()) << IdOf(code);
    EXPECT_FALSE(verdict.passed);
    EXPECT_STREQ(IdOf(verdict.reasons.front().code), IdOf(code));
    EXPECT_EQ(verdict.reasons.front().names, names);
  }
}

TEST(Verdict, OnHeights) {
  const std::string net = Example("levelling");
  EXPECT_TRUE(ReportOn(net, 0.0015).verdict.passed);
  const Report typo = ReportOn(With(net, "BM2,01,,,", "BM2,01,,,1"), 0.0015);
  ASSERT_FALSE(typo.verdict.passed);
  EXPECT_EQ(typo.verdict.reasons.front().code, BRENU_CONTROL_DOES_NOT_FIT);
  EXPECT_THAT(typo.verdict.reasons.front().names, ElementsAre("BM2", "H"));
  // Errors twice as large as assumed are the scale, not one of the observations.
  const Report scale = ReportOn(net, 0.0007);
  ASSERT_FALSE(scale.verdict.passed);
  EXPECT_EQ(scale.verdict.reasons.front().code, BRENU_M0_TOO_LARGE);
  EXPECT_EQ(scale.verdict.next.find("brenu adjust --level-sigma 1.4 "), 0U) << scale.verdict.next;
  // The grade, not a gross error; the next finer than the one that it meets.
  const Report grade = ReportOn(With(net, "Lvl1:3", "Lvl1:2"), 0.0015);
  ASSERT_EQ(grade.verdict.reasons.size(), 1U);
  const Finding& closure = grade.verdict.reasons.front();
  EXPECT_EQ(closure.code, BRENU_CLOSURE_OF_HEIGHTS);
  ASSERT_EQ(closure.values.size(), 5U);
  EXPECT_EQ(closure.values[2], 2.0);
  EXPECT_EQ(closure.values[3], 3.0);
  EXPECT_EQ(closure.values[4], 1.0);
}

TEST(Verdict, AfterSnooping) {
  const std::string net = With(Example("blunders"), "Lvl2:4", "Lvl2:5");
  const Report before = ReportOn(net);
  EXPECT_FALSE(before.verdict.passed);
  EXPECT_EQ(before.verdict.next, "brenu adjust --snoop 0.001 net.txt");
  const Report after = ReportOn(net, 0.001, 0.001);
  EXPECT_TRUE(after.verdict.passed) << SentenceOf(after.verdict.reasons.front());
  EXPECT_EQ(after.plane->takenOut.size(), 2U);
}

}  // namespace
}  // namespace brenu
