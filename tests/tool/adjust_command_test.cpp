#include "tool/program.h"

namespace brenu::testing {
namespace {

class AdjustCommand : public ProgramTest {
 protected:
  std::string Out(const std::string& name) const { return Folder() + '/' + name; }
};

// P on the line between A and B, both distances 4 mm too long.  Across the line P hangs on the
// angle at A: 2.5" times sqrt(2) over 100 m, along the line on two distances of 5 mm.
const char* const kPlane =
    "[PARAM]\nMO:2.5\nMS:0.005\nMR:0\n\n"
    "[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
    "[OBS]\nA,B,0,,,\nA,P,0,100.004,,\nB,P,,100.004,,\n";
// Four lines to P, one of them 50 mm off.
const char* const kFourLines =
    "[PT]\nA,01,,,100\nB,01,,,101\nC,01,,,102\nD,01,,,103\nP,00,,,\n\n"
    "[OBS]\nA,P,,1000,0.5,\nB,P,,1000,-0.5,\nC,P,,1000,-1.5,\nD,P,,1000,-2.55,\n";

TEST_F(AdjustCommand, PrintsSummaryAndTable) {
  ExpectOutput(kPlane, {"stations +2\n", "directions +2\n", "redundancy +1\n",
                        "unit weight +2\\.83  \" +m0 = 1\\.131 times.*MO = 2\\.50",
                        "largest point error +4\\.45  mm  P\n",
                        "residual of a distance +-4\\.00  mm  A - P\n",
                        "A \\* +1000\\.0000  1000\\.0000 .* -\n",
                        "P +1000\\.0000  1100\\.0000 +1\\...  +.\\... +4\\.4. "
                        "+.\\... +1\\... +90 00\n"});
}

TEST_F(AdjustCommand, WithoutRedundancyPrecisionIsLeftOut) {
  const Outcome run = On(With(kPlane, "B,P,,100.004,,\n", ""), "adjust");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("nothing is redundant in the plane"));
  EXPECT_THAT(run.out, HasSubstr("warning: the redundancy is 0"));
  // Two directions of 2.5" in 100 m across the line, 5 mm along it.
  EXPECT_THAT(run.out, ContainsRegex("P +1000\\.0000  1100\\.0040 +1\\.71 +5\\.00 "));
  EXPECT_THAT(run.out, Not(HasSubstr("nan")));
}

TEST_F(AdjustCommand, StatusAndSentenceOfAFailure) {
  ExpectFailure("[PT]\nA,01,,,100\nB,00,,\n", 2, "net.txt: line 3 \"B,00,,\": a point line has");
  ExpectFailure(With(kFourLines, ",1000,", ",-10,"), 2, "the distance A - P is negative");
  ExpectFailure(With(kPlane, "MO:2.5", "MO:0"), 2, "correct MO");
  ExpectFailure(With(kFourLines, "0.5", "1e300"), 1, "too large to compute with");
  std::string many = "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\n";
  for (char name = 'B'; name <= 'M'; ++name) many += std::string(1, name) + ",00,,,\n";
  many += "\n[OBS]\nA,B,0,10,,\n";
  ExpectFailure(many, 1, "B, C, D, E, F, G, H, I, J, K and 2 more;", "adjust --classic");
  const Outcome run = On(many, "adjust");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("the point K is left out: it has no observation;"));
  EXPECT_THAT(run.err, Not(HasSubstr("the point L")));
  EXPECT_THAT(run.err, HasSubstr("and 2 more like this: "));
  EXPECT_THAT(run.err, HasSubstr("no new point can be placed"));
}

TEST_F(AdjustCommand, DoubtsAreWarningsOrWithStrictFaults) {
  const std::string slip = With(kFourLines, "0.5", "O.5");
  const Outcome run = On(slip, "adjust --no-verdict");
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("Adjusted heights"));
  EXPECT_THAT(run.err,
              HasSubstr("net.txt: warning: line 9: \"O.5\" is no number and is read as 0;"));
  ExpectFailure(slip, 2, "\"O.5\" is no number", "adjust --strict");
}

TEST_F(AdjustCommand, UsageAndVersion) {
  EXPECT_EQ(Execute("").status, 2);
  EXPECT_EQ(Execute("closures").status, 2);
  EXPECT_EQ(Execute("adjust \"" + Out("missing") + '"').status, 2);
  const Outcome wrong = Execute("level x");
  EXPECT_EQ(wrong.status, 2);
  EXPECT_THAT(wrong.err, HasSubstr("no command level; the commands are adjust, check, closures"));
  EXPECT_THAT(Execute("--version").out, ContainsRegex("^brenu 0\\."));
  EXPECT_THAT(Execute("adjust --help").out, HasSubstr("Exit status: 0 done"));
}

TEST_F(AdjustCommand, SnoopingListsAndMarksWhatItTakesOut) {
  ExpectOutput(kFourLines,
               {"redundancy +2\n", "Taken out by data snooping: 1\n",
                "\n +1  height difference  D +P +.* -50\\.00\n"},
               "adjust --snoop 0.001 --result \"" + Out("result") + '"');
  EXPECT_THAT(Read(Out("result")), ContainsRegex(" D +P .*  gross error\n"));
  ExpectOutput(With(kFourLines, "-2.55", "-2.501"), {"Data snooping took no observation out\n"},
               "adjust --snoop 0.001");
  for (const char* const alpha : {"0", "1", "nan", "much"}) {
    EXPECT_EQ(On(kFourLines, std::string("adjust --snoop ") + alpha).status, 2);
  }
}

TEST_F(AdjustCommand, WithoutClosuresNoReportIsWritten) {
  const Outcome run = On("[PT]\nA,01,,,10\nN,00,,,\n\n[OBS]\nA,N,,400,1,\n",
                         "adjust --no-verdict --closures \"" + Out("closures") + '"');
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, HasSubstr("no closure report is written"));
  EXPECT_FALSE(std::filesystem::exists(Out("closures")));
}

TEST_F(AdjustCommand, SaysThatAReportCannotBeWritten) {
  ExpectFailure(kFourLines, 2, "folder cannot be written",
                "adjust --closures \"" + Out("no/folder") + '"');
  const Outcome run = On(kFourLines, "adjust --result \"" + Folder() + '"');
  EXPECT_EQ(run.status, 2);
  EXPECT_THAT(run.err, HasSubstr("cannot be written"));
  EXPECT_THAT(run.out, HasSubstr("Adjusted heights"));  // computed all the same
}

TEST_F(AdjustCommand, RelativeEllipsesAskedFor) {
  const std::string report = "adjust --no-verdict --report \"" + Out("report") + "\" ";
  EXPECT_EQ(On(With(kPlane, "P,00,,,\n", "P,00,,,\nQ,00,,,\n") + "A,Q,45,100,,\n",
               report + "--between P Q --between Q P --between A B")
                .status,
            0);
  const std::string told = Read(Out("report"));
  EXPECT_THAT(told, HasSubstr("no relative ellipse of A and B"));
  EXPECT_THAT(told, ContainsRegex("\n  P +Q +.*\\...  .*\\..."));
  EXPECT_THAT(told, Not(ContainsRegex("\n  Q +P ")));
  ExpectFailure(kPlane, 2, "there is no point X; correct the name", "adjust --between P X");
  ExpectFailure(kPlane, 2, "the same point P", "adjust --between P P");
}

TEST_F(AdjustCommand, SpeaksChinese) {
  const Outcome run = On(With(kFourLines, "0.5", "O.5"), "adjust --lang zh");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("net.txt: 警告：第 9 行：\"O.5\" 不是数，按 0 读入；"));
  EXPECT_THAT(run.out, HasSubstr("未通过\n"));
  EXPECT_EQ(On(kFourLines, "adjust --lang fr").status, 2);
}

TEST_F(AdjustCommand, SaysWhichNamesTheResultReportCannotShow) {
  std::string text = kFourLines;
  for (std::size_t at = 0; (at = text.find('P', at)) != std::string::npos;) {
    if (text.compare(at, 2, "PT") == 0) {
      ++at;
    } else {
      text.replace(at, 1, "点");
    }
  }
  const std::string command = "adjust --no-verdict --result \"" + Out("result") + '"';
  EXPECT_THAT(On(text, command).err, HasSubstr("the names of the point 点 come out as other"));
  EXPECT_THAT(On(kFourLines, command).err, Not(HasSubstr("code page")));
}

TEST_F(AdjustCommand, AReportDoesNotOverwriteTheData) {
  ExpectFailure(kFourLines, 2, "would overwrite",
                "adjust --result \"" + Folder() + "/../" +
                    std::filesystem::path(Folder()).filename().string() + "/net.txt\"");
  EXPECT_EQ(Read(Out("net.txt")), kFourLines);
  ExpectFailure(kFourLines, 2, "would overwrite",
                "adjust --result \"" + Out("x") + "\" --closures \"" + Out("x") + '"');
}

}  // namespace
}  // namespace brenu::testing
