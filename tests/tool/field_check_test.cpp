#include <algorithm>

#include "tool/program.h"

namespace brenu::testing {
namespace {

// Slips that change what is read; the work goes on with a warning that names the line.
class FieldCheck : public ProgramTest {
 protected:
  void ExpectWarnings(const std::string& text, const std::vector<std::string>& tellings) const {
    const Outcome run = Adjust(text);
    EXPECT_EQ(run.status, 0) << run.err;
    for (const std::string& telling : tellings) EXPECT_THAT(run.err, HasSubstr(telling));
    EXPECT_EQ(static_cast<std::size_t>(std::count(run.err.begin(), run.err.end(), '\n')),
              tellings.size())
        << run.err;
  }
};

const char* const kLevelling =
    "[PARAM]\nMO:2\nLvl1:4\n\n"
    "[PT]\nA,01,,,100\nB,01,,,101\nP,00,,,\n\n"
    "[OBS]\nA,P,,1000,0.504,\nB,P,,1000,-0.5,\n";

// All angles are just within what is written: 60 seconds come from rounding, -1 stands for none.
const char* const kPlane =
    "[PARAM]\nMO:2.5\nMS:0.005\nMR:0\n\n"
    "[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
    "[OBS]\nA,B,10.5960,,,\nA,P,+11.00,100.004,,\nB,P,-1,100.004 ,,\n";

TEST_F(FieldCheck, Numbers) {
  ExpectWarnings(kLevelling, {});
  ExpectWarnings(With(kLevelling, "0.504", "O.504"),
                 {"line 11: \"O.504\" is no number and is read as 0;"});
  ExpectWarnings(With(kLevelling, "0.504", "0.5O4"),
                 {"\"0.5O4\" is no number and is read as 0.5;"});
  ExpectWarnings(With(kLevelling, "1000", "1000m"),
                 {"\"1000m\" is no number and is read as 1000;"});
  ExpectWarnings(With(kLevelling, "100\n", "10o\n"), {"line 6: \"10o\" is no number"});
  ExpectWarnings(With(kLevelling, "MO:2", "MO:2,5"), {"line 2: \"2,5\" is no number"});
  ExpectWarnings(With(kLevelling, "0.504,", "0,004"),
                 {"the line A - P has an azimuth, which takes"});
}

TEST_F(FieldCheck, Angles) {
  ExpectWarnings(kPlane, {});
  for (const char* const angle : {"10.6000", "10.5961", "361", "-0.1"}) {
    ExpectWarnings(With(kPlane, "10.5960", angle),
                   {'"' + std::string(angle) + "\" is no angle dd.mmss between 0 and 360 degrees"});
  }
  ExpectWarnings("[STATION]\nA,01,,,100\nP,0\n[OBSER]\nA,P,12.75,10,1\n",
                 {"line 5: \"12.75\" is no"});
}

TEST_F(FieldCheck, KeysAndTypes) {
  ExpectWarnings(With(kLevelling, "MO:2", "M0:2"), {"line 2: \"M0:2\" gives no known parameter"});
  ExpectWarnings(With(kLevelling, "MO:2", "MO:"), {"line 2: the parameter MO has no value"});
  ExpectWarnings(With(kLevelling, "MO:2", "format:7"), {"there is no format 7"});
  ExpectWarnings(With(kLevelling, "B,01,", "B,02,"), {"line 7: the point type \"02\" is none of"});
  ExpectWarnings(With(kLevelling, "A,01,,,100", "A,01,100,,"),
                 {"the type \"01\" of the point A says"});
}

TEST_F(FieldCheck, HeaderAndLineLength) {
  const Outcome run = Adjust(With(kLevelling, "[OBS]", "[OBSER]"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("line 10 \"[OBSER]\" is no section header"));
  ExpectWarnings("[param]\nMO:1\n\n" + std::string(kLevelling),
                 {"line 1 \"[param]\" is no section"});
  ExpectWarnings(With(kLevelling, "1000", "0"), {"the height difference A - P has no line length"});
}

TEST_F(FieldCheck, ManyDoubtsAreCounted) {
  std::string text = "[PT]\nA,01,,,100\n";
  for (char name = 'B'; name <= 'I'; ++name) text += std::string(1, name) + ",new,,,\n";
  const Outcome run = Adjust(text);
  EXPECT_THAT(run.err, HasSubstr("line 7: \"new\" is no number"));
  EXPECT_THAT(run.err, Not(HasSubstr("line 8")));
  EXPECT_THAT(run.err, HasSubstr("3 more fields are in doubt"));
}

TEST_F(FieldCheck, EnormousValuesGiveNoResults) {
  ExpectFailure(With(kLevelling, "0.504", "1e300"), 1, "too large to compute with");
}

// What a network needs depends on its control points and its format.
TEST_F(FieldCheck, HintsAtTwoJobsAndAtFormat3) {
  const std::string combined =
      "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,11,1000,1000,50\nB,11,1000,1200,51\nP,00,,,\nR,01,,,"
      "52\n\n"
      "[OBS]\nA,B,0,,,\nA,P,10,100,1,\nP,R,,300,1,\n";
  ExpectFailure(combined, 1, "the point R; observe each with direction and distance, or by");
  ExpectFailure(combined, 1, "or adjust heights and plane as two jobs");
  ExpectFailure(
      "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
      "[OBS]\nA,P,,100,,\nB,P,,110,,\n",
      1, "adjust the distances alone with format 3");
}

}  // namespace
}  // namespace brenu::testing
