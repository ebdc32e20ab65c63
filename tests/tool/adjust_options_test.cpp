#include "tool/program.h"

namespace brenu::testing {
namespace {

class AdjustOptions : public ProgramTest {
 protected:
  std::string Out(const std::string& name) const { return Folder() + '/' + name; }
};

// Four lines to P, one of them 50 mm off.
const char* const kLevelling =
    "[PT]\nA,01,,,100\nB,01,,,101\nC,01,,,102\nD,01,,,103\nP,00,,,\n\n"
    "[OBS]\nA,P,,1000,0.5,\nB,P,,1000,-0.5,\nC,P,,1000,-1.5,\nD,P,,1000,-2.55,\n";

TEST_F(AdjustOptions, WritesBothReports) {
  const Outcome run = On(kLevelling, "adjust --summary --result \"" + Out("result") +
                                         "\" --closures \"" + Out("closures") + '"');
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, Not(HasSubstr("Adjusted heights")));
  EXPECT_THAT(Read(Out("result")), HasSubstr("[VERTICAL]\n"));
  EXPECT_THAT(Read(Out("closures")), HasSubstr("50.000(mm)"));  // a line with D
}

TEST_F(AdjustOptions, SnoopingListsAndMarksWhatItTakesOut) {
  ExpectOutput(kLevelling,
               {"Taken out by data snooping: 1\n", "\n  D +P +height difference +50\\.00  mm\n",
                "height differences +4 +1 of them taken out\n", "redundancy +2\n",
                "worst residual of a height difference +-?0\\.00  mm", "P +100\\.5000 +0\\.00\n"},
               "adjust --snoop 0.001 --result \"" + Out("result") + '"');
  EXPECT_THAT(Read(Out("result")), ContainsRegex(" D +P .*  gross error\n"));
  ExpectOutput(With(kLevelling, "-2.55", "-2.501"), {"Data snooping took no observation out\n"},
               "adjust --snoop 0.001");
}

// One distance can be checked, and any residual is above this critical value: with one of the three
// taken out, the rest is taken for wrong as well.
TEST_F(AdjustOptions, SaysThatSnoopingTookOutTooMuch) {
  ExpectFailure(
      "[PARAM]\nMO:2\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1500,\nP,00,,,\n"
      "Q,00,,,\n\n[OBS]\nA,B,287.53209,,,\nA,P,243.25571,1095.5693,,\nA,Q,203.52134,691.6186,,\n"
      "Q,P,,714.3444,,\n",
      1, "observations that the network cannot do without", "adjust --snoop 0.999");
}

TEST_F(AdjustOptions, WithoutClosuresNoReportIsWritten) {
  const Outcome run = On("[PT]\nA,01,,,10\nN,00,,,\n\n[OBS]\nA,N,,400,1,\n",
                         "adjust --closures \"" + Out("closures") + '"');
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, HasSubstr("there are no closure errors"));
  EXPECT_THAT(run.err, HasSubstr("no closure report is written"));
  EXPECT_FALSE(std::filesystem::exists(Out("closures")));
}

TEST_F(AdjustOptions, SaysThatAReportCannotBeWritten) {
  ExpectFailure(kLevelling, 2, "the closure report cannot be written to ",
                "adjust --closures \"" + Out("no/folder") + '"');
  const Outcome run = On(kLevelling, "adjust --result \"" + Folder() + '"');
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.err, HasSubstr("the result report cannot be written to "));
  EXPECT_THAT(run.out, HasSubstr("Adjusted heights"));  // computed all the same
}

TEST_F(AdjustOptions, AReportDoesNotOverwriteTheData) {
  ExpectFailure(kLevelling, 2, "would overwrite",
                "adjust --result \"" + Folder() + "/../" +
                    std::filesystem::path(Folder()).filename().string() + "/net.txt\"");
  EXPECT_EQ(Read(Out("net.txt")), kLevelling);
  ExpectFailure(kLevelling, 2, "would overwrite",
                "adjust --result \"" + Out("x") + "\" --closures \"" + Out("x") + '"');
}

TEST_F(AdjustOptions, LevelOfSignificanceLiesBetween0And1) {
  for (const char* const alpha : {"0", "1", "-0.1", "nan", "much"}) {
    const Outcome run = On(kLevelling, std::string("adjust --snoop ") + alpha);
    EXPECT_EQ(run.status, 2) << alpha;
    EXPECT_THAT(run.err, HasSubstr("--snoop")) << alpha;
  }
}

}  // namespace
}  // namespace brenu::testing
