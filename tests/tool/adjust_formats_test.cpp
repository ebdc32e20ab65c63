// The networks that the program computes in other ways than by directions and distances together.
#include "tool/program.h"

namespace brenu::testing {
namespace {

class AdjustFormats : public ProgramTest {};

// Two sides of 100 m at a right angle between A and B, which are 20 mm further apart than they
// should be: 10 mm fall to each side.
const char* const kUnoriented =
    "[PARAM]\nformat:1\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1141.44136,\nU,00,,,\n\n"
    "[OBS]\nU,A,30,100,,\nU,B,120,100,,\n";

TEST_F(AdjustFormats, TraverseWithoutOrientation) {
  ExpectOutput(kUnoriented, {"\n +200\\.000 +0\\.0200 +1:999. +A - U - B\n",
                             "  U       929\\.2893  1070\\.7207\n", "\nTraverse A - B\n",
                             "\n  A +- +- +135 00 00\\.0 +100\\.0000 .* 10\\.0 +1000\\.0",
                             "\n  U +90 00 00\\.0 +0\\.00 +45 00 00\\.0 +100\\.0000 ",
                             "\n  B +- .* 1000\\.0000  1141\\.4414\n",
                             "linear misclosure 0\\.0200 m in 200\\.000 m, 1:"});
  ExpectOutput(kUnoriented, {" 0\\.0200 +1:.* +A - U - B\n"}, "closures");
  ExpectFailure(With(kUnoriented, "U,B,120", "U,B,"), 1, "no traverse", "closures");
  ExpectFailure(kUnoriented, 2, "leave out --result", "adjust --result x");
  ExpectFailure(kUnoriented, 2, "leave out --snoop", "adjust --snoop 0.01");
}

// P lies 100 m north of the line A - B, Q 100 m west of P.  C, when given, tells the side of both;
// its distances are consistent with the other ones.
std::string Distances(const std::string& p, const std::string& q, bool withThird) {
  std::string text =
      "[PARAM]\nMO:2\nMS:0.005\nMR:0\nformat:3\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\n"
      "C,10,1400,1300,\nP,00," +
      p + ",\nQ,00," + q +
      ",\n\n[OBS]\nA,P,,141.42136,,\nP,B,,141.42136,,\nP,Q,,100,,\nQ,A,,100,,\n";
  return withThird ? text + "P,C,,360.55513,,\nC,Q,,424.26407,,\n" : text;
}

TEST_F(AdjustFormats, DistancesOnlyTellTheSide) {
  ExpectOutput(Distances(",", ",", true),
               {"distances +6\n", "redundancy +2\n", "P +1100\\.0000  1100\\.0000 ",
                "Q +1100\\.0000  1000\\.0000 "});
  ExpectOutput(Distances("1090,1110", "1050,1010", false),
               {"P +1100\\.0000  1100\\.0000 ", "Q +1100\\.0000  1000\\.0000 "});
  ExpectOutput(Distances("910,1110", "950,1010", false),
               {"P +900\\.0000  1100\\.0000 ", "Q +900\\.0000  1000\\.0000 "});
}

TEST_F(AdjustFormats, SaysWhichPointsCannotBePlaced) {
  const std::string classic = "adjust --classic";
  ExpectFailure(Distances(",", ",", false), 1, "the side of the point P on the line A - B",
                classic);
  ExpectFailure(Distances("1090,1110", ",", false), 1, "the side of the point Q on the line",
                classic);
  ExpectFailure(With(Distances("1090,1110", ",", false), "P,B,,141.42136", "P,B,,20"), 1,
                "no place can be found for the points P and Q;", classic);
  ExpectFailure(With(Distances(",", ",", true), "A,10,1000", "A,10,0"), 1,
                "the point A lies at X = 0", classic);
  const Outcome run = On(Distances(",", ",", false), "adjust");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("the points P and Q are left out: they hang together"));
  // A distance to a point in line with the two centres fits both sides, whatever its error.
  std::string text = With(Distances(",", ",", true), "C,10,1400,", "C,10,1000,");
  text = With(With(text, "P,C,,360.55513", "P,C,,223.6068"), "C,Q,,424.26407", "C,Q,,316.2278");
  ExpectFailure(text, 1, "is undetermined", classic);
}

}  // namespace
}  // namespace brenu::testing
