#include "support/line_end.h"
#include "tool/program.h"

namespace brenu::testing {
namespace {

class AdjustCommand : public ProgramTest {};

// P half way between two bench marks: 4 mm of misclosure, half of it on each line of 1 km.
const char* const kLevelling =
    "[PT]\nA,01,,,100\nP,00,,,\nB,01,,,101\n\n"
    "[OBS]\nA,P,,1000,0.504,\nP,B,,1000,0.5,\n";

// P on the line between A and B, both distances 4 mm too long.  Across the line P hangs on the
// angle at A: 2.5" times sqrt(2) over 100 m, along the line on two distances of 5 mm.
const char* const kPlane =
    "[PARAM]\nMO:2.5\nMS:0.005\nMR:0\n\n"
    "[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
    "[OBS]\nA,B,0,,,\nA,P,0,100.004,,\nB,P,,100.004,,\n";

TEST_F(AdjustCommand, LevellingNetwork) {
  ExpectOutput(
      kLevelling,
      {"control points +2\n", "height differences +2\n", "unit weight +2\\.83  mm  for 1 km",
       "largest point error +2\\.00  mm  P\n", "worst residual of a height difference +-2\\.00  mm",
       "  Point     H \\(m\\)  mH \\(mm\\)\n"
       "  A \\*    100\\.0000        -\n"
       "  P      100\\.5020     2\\.00\n"
       "  B \\*    101\\.0000        -\n"});
}

TEST_F(AdjustCommand, PlaneNetwork) {
  ExpectOutput(kPlane, {"stations +2\n", "directions +2\n", "redundancy +1\n",
                        "unit weight +2\\.83  \" +m0 = 1\\.131 times.*MO = 2\\.50",
                        "largest point error +4\\.45  mm  P\n",
                        "residual of a distance +-4\\.00  mm  A - P\n",
                        "A \\* +1000\\.0000  1000\\.0000 .* -\n",
                        "P +1000\\.0000  1100\\.0000 +1\\.9  4\\.0  4\\.4  4\\.0  1\\.9 +90 00\n"});
}

TEST_F(AdjustCommand, StationFileWithBothNetworks) {
  ExpectOutput(
      "[PARA]\nMO:2.5\nMS:0.005\nMR:0\n[STATION]\nA,11,1000,1000,50\nB,11,1000,1200,51\nP,0\n"
      "[OBSER]\nA,B,0,,0\nA,P,0,100,0.5\nB,P,0,100,-0.5\n",
      {"Levelling network\n", "P +50\\.5000 +0\\.00\n", "Plane network\n",
       "P +1000\\.0000  1100\\.0000 "});
}

TEST_F(AdjustCommand, WithoutRedundancyPrecisionIsLeftOut) {
  const Outcome run = Adjust(
      "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\nP,00,,,\n\n"
      "[OBS]\nA,B,0,,,\nA,P,0,100,,\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, HasSubstr("warning: the redundancy is 0"));
  EXPECT_THAT(run.out, ContainsRegex("P +1000\\.0000  1100\\.0000 +- +- +- +- +- +-\n"));
  EXPECT_THAT(run.out, Not(HasSubstr("nan")));
}

TEST_F(AdjustCommand, WarnsOfWhatIsSilentlyLost) {
  const Outcome millimetres = Adjust(With(kPlane, "MS:0.005\nMR:0", "MS:5\nMR:5") + "\nB,A,0,,,\n");
  EXPECT_EQ(millimetres.status, 0);
  EXPECT_THAT(millimetres.err, HasSubstr("100 m a standard error of 505 m"));
  EXPECT_THAT(millimetres.err, HasSubstr("MS:0.005 and MR:0.000005"));
  EXPECT_THAT(millimetres.err, HasSubstr("line 16 stands outside the sections"));
}

TEST_F(AdjustCommand, SaysWhyAFileCannotBeRead) {
  const Outcome missing = Execute("adjust \"" + Folder() + "/missing.txt\"");
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.err, HasSubstr("there is no such file"));
  const Outcome directory = Execute("adjust \"" + Folder() + '"');
  EXPECT_EQ(directory.status, 2);
  EXPECT_THAT(directory.err, HasSubstr("this is a directory"));

  ExpectFailure("A,01,,,100\n", 2, "neither a project file");
  ExpectFailure("", 2, "neither a project file");
  ExpectFailure("\xEF\xBB\xBF[PARAM]\nMS:0.005\n\n[PT]\nA,01,,,100\n", 2, "byte-order mark");
  ExpectFailure(std::string("[PARA]") + kReturnAndLineEnd + "[STATION]\nA,01\n", 2,
                "line 1 is a section header");
  ExpectFailure("[PARAM]\nMO:2\n[PT]\nA,01,,,100\n", 2, "line 3 is a section header without");
  ExpectFailure("[PT]\nA,01,,,100\nB,00,,\n", 2, "line 3 \"B,00,,\": a point line has");
  ExpectFailure("[STATION]\nA,01,,,100\n[OBSER]\nA,Q,0,10,1\n", 2,
                "line 4 \"A,Q,0,10,1\": the target is not among");
}

TEST_F(AdjustCommand, SaysWhichDataCannotBeUsed) {
  ExpectFailure(With(kLevelling, ",1000,", ",-10,"), 2, "the distance A - P is negative");
  ExpectFailure("[PT]\nA,01,,,inf\n", 2, "coordinate of the point A");
  ExpectFailure(With(kPlane, "MO:2.5", "MO:0"), 2, "correct MO");
  ExpectFailure(With(kPlane, "MS:0.005", "MS:0"), 2, "the distance A - P is not positive");
}

TEST_F(AdjustCommand, SaysWhyANetworkCannotBeComputed) {
  ExpectFailure("[PT]\n\n[OBS]\n", 1, "no points");
  ExpectFailure("[PT]\nA,00,,,100\nB,00,,,\n\n[OBS]\nA,B,,10,1,\n", 1, "no control point");
  ExpectFailure("[PT]\nA,01,,,100\nB,00,,,\n", 1, "no observations");
  ExpectFailure("[PT]\nA,01,,,100\nB,00,,,\n\n[OBS]\nA,B,,,1,\n", 1, "no levelled height");
  ExpectFailure("[PT]\nA,01,,,100\nB,00,,,\nC,00,,,\n\n[OBS]\nA,B,,10,1,\n", 1,
                "heights cannot be computed for the point C;");
  std::string many = "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\n";
  for (char name = 'B'; name <= 'M'; ++name) many += std::string(1, name) + ",00,,,\n";
  ExpectFailure(many + "\n[OBS]\nA,B,0,10,,\n", 1, "B, C, D, E, F, G, H, I, J, K and 2 more;");
  ExpectFailure(
      "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1000,\n\n"
      "[OBS]\nA,B,0,10,,\n",
      1, "line A - B lie at the same place");
  // Zero north, and the reading to P a second more than its azimuth: reduced to -1" or 359 59 59.
  ExpectFailure(
      "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1200,1000,\nP,00,,,\n\n"
      "[OBS]\nA,B,0,,,\nA,P,90.0001,100,,\nB,A,0,,,\nB,P,333.2606,223.607,,\n",
      1, "puts the direction A - P a full circle off");
  EXPECT_THAT(Adjust(With(kPlane, "MS:0.005", "MS:1e12")).err,
              HasSubstr("the normal equations of the plane network are singular"));
}

TEST_F(AdjustCommand, UsageAndVersion) {
  EXPECT_EQ(Execute("").status, 2);
  EXPECT_EQ(Execute("adjust").status, 2);
  EXPECT_EQ(Execute("level x").status, 2);
  EXPECT_THAT(Execute("--version").out, ContainsRegex("^brenu 0\\."));
  const Outcome help = Execute("adjust --help");
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.out, HasSubstr("Exit status: 0 done"));
}

}  // namespace
}  // namespace brenu::testing
