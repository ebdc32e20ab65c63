// What can be said before an adjustment.
#include <algorithm>

#include "tool/program.h"

namespace brenu::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

class CheckCommand : public ProgramTest {};

// A square of 100 m between A and B; the direction from A to Q is a degree off, the distance from P
// to B is 20 mm shorter one way.
const char* const kSquare =
    "[PARAM]\nMO:2\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1100,\nP,00,,,\nQ,00,,,\n\n"
    "[OBS]\nA,B,90,,,\nA,P,45,141.4214,,\nA,Q,1,100,,\nB,A,270,,,\nB,Q,315,141.4214,,\n"
    "B,P,0,100,,\nP,B,0,99.98,,\nP,Q,90,100,,\nQ,P,0,100,,\n";

TEST_F(CheckCommand, NamesWhatDoesNotFitBeforeTheAdjustment) {
  const Outcome run = On(kSquare, "check");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("plane network"));
  EXPECT_THAT(run.out, ContainsRegex("directions +9\n"));
  EXPECT_THAT(run.out, ContainsRegex("There and back.*\n.*\n +distance +B +P +100\\.0000 "
                                     "+20\\.00 +mm +2\\.8\n"));
  EXPECT_THAT(run.out, ContainsRegex("Observed minus computed.*\n.*\n +direction +A +Q "
                                     "+01 00 00"));
}

TEST_F(CheckCommand, NamesWhatIsNotDetermined) {
  const Outcome run = On(With(kSquare, "Q,00,,,\n", "Q,00,,,\nR,00,,,\n"), "check");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("the point R is left out"));
  EXPECT_THAT(run.out, ContainsRegex("points +5\n"));
}

// P comes to 100.5 from A; sqrt(1 km + 1 km) and sqrt(4 km) of 1 mm.
TEST_F(CheckCommand, ComparesHeightDifferences) {
  ExpectOutput(
      "[PT]\nA,01,,,100\nB,01,,,102\nP,00,,,\n\n"
      "[OBS]\nA,P,,1000,0.5,\nP,A,,1000,-0.503,\nP,B,,4000,1.496,\n",
      {"levelling network\n", "height differences +3\n",
       "There and back.*\n.*\n +height difference +A +P +0\\.5000 +-3\\.00 +mm +-2\\.1\n",
       "Observed minus computed.*\n.*\n.* P +A +-0\\.5030 +-3\\.00 +mm +-3\\.0\n.* P +B +1\\.4960 "
       "+-4\\.00 +mm +-2\\.0\n"},
      "check");
}

TEST_F(CheckCommand, SpeaksChinese) {
  const Outcome run = On(kSquare, "check --lang zh");
  EXPECT_THAT(run.out, ContainsRegex("平差前检查：平面网\n"));
  EXPECT_THAT(run.out,
              ContainsRegex("往返测较差，最大的 2 个，共 2 个\n.*较差.*\n.* B +P +100\\.0000 "));
  const std::string closures =
      Execute("closures --lang zh \"" BRENU_EXAMPLES "/combined.txt\"").out;
  EXPECT_THAT(closures, ContainsRegex("水准路线和闭合环：13 条合格，0 条超限\n.*闭合差 \\(mm\\)"));
  for (const std::string& text : {run.out, closures}) {
    const auto isEnglish = [](char c, bool) { return c >= 'a' && c <= 'z'; };
    EXPECT_EQ(std::search_n(text.begin(), text.end(), 3, true, isEnglish), text.end()) << text;
  }
}

// Legs of 30 m and 40 m at a right angle reach 50 m; A and B are 49.9920 m apart.
TEST_F(CheckCommand, ShowsTraversesWithoutOrientation) {
  ExpectOutput(
      "[PARAM]\nMO:2\nMS:0.005\nMR:0\nformat:1\n\n[PT]\nA,10,1000,1000,\nB,10,1030,1039.99,\n"
      "P,00,,,\n\n[OBS]\nA,P,0,30,,\nP,A,0,30,,\nP,B,270,40,,\nB,P,0,40,,\n",
      {"Traverses without orientation\n", "control points of the plane +2\n",
       "70\\.000 +0\\.0080 +1:87.. +A - P - B\n"},
      "check");
}

}  // namespace
}  // namespace brenu::testing
