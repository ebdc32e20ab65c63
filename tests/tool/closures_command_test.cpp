#include "tool/program.h"

namespace brenu::testing {
namespace {

struct ClosuresCommand : ProgramTest {
  Outcome Closures(const std::string& text) const { return On(text, "closures"); }
};

// From A over N to B the differences sum up to `rise` + 0.51 m over 0.9 km, where the bench marks
// say 1.5 m; the limit is 20 sqrt(0.9) = 18.97 mm.
std::string Line(const std::string& rise) {
  return "[PT]\nA,01,,,10\nB,01,,,11.5\nN,00,,,\n\n[OBS]\nA,N,,400," + rise +
         ",\nB,N,,500,-0.51,\n";
}

// From A, with back sight north to Z, 100 m east to T and 100 m east to B, with a fore sight north
// to Y: angles of 90, `atT` and 90 degrees, the second side `side` long.
std::string Traverse(const std::string& atT, const std::string& side) {
  return "[PARAM]\nMO:2\nMS:0.005\nMR:0\n\n[PT]\nA,10,1000,1000,\nB,10,1000,1200,\n"
         "Y,10,1500,1200,\nZ,10,1500,1000,\nT,00,,,\n\n"
         "[OBS]\nA,T,100,100,,\nA,Z,10,,,\nB,T,10,,,\nB,Y,100,,,\n"
         "T,A,10,,,\nT,B," +
         atT + "," + side + ",,\n";
}

TEST_F(ClosuresCommand, LevellingLine) {
  const Outcome good = Closures(Line("1.0"));
  EXPECT_EQ(good.status, 0);
  EXPECT_EQ(good.err, "");
  EXPECT_EQ(good.out,
            "Levelling lines and loops: 1 pass, 0 fail\n"
            "  Misclosure (mm)  Limit (mm)  Length (km)  Result  Route\n"
            "           -10.00       18.97        0.900  passes  B - N - A\n");
  EXPECT_THAT(On(Line("1.0"), "closures --failed").out, Not(HasSubstr("B - N - A")));
  const Outcome bad = On(Line("1.02"), "closures --failed");
  EXPECT_EQ(bad.status, 1);
  EXPECT_THAT(bad.err, HasSubstr("1 of 1 closure errors are beyond their limits"));
  EXPECT_THAT(bad.out, ContainsRegex("0 pass, 1 fail\n.*\n +-30\\.00 .* FAILS +B - N - A\n"));
}

// Limits: 5" sqrt(3) = 8.7" and 200 m / 35000 = 5.7 mm.
TEST_F(ClosuresCommand, TraverseSaysWhichMisclosureFails) {
  ExpectOutput(
      Traverse("190", "100.005"),
      {"^Traverses: 1 pass, 0 fail\n", " 0\\.0 +8\\.7 +0\\.0050 +0\\.0057 +1:.* passes +A - T"},
      "closures");
  const Outcome angles = Closures(Traverse("190.0010", "100"));
  EXPECT_EQ(angles.status, 1);
  EXPECT_THAT(angles.out, ContainsRegex(" 10\\.0 +8\\.7 .* FAILS: angles +A - T - B\n"));
  EXPECT_THAT(Closures(Traverse("190", "100.1")).out, HasSubstr("FAILS: length "));
  EXPECT_THAT(Closures(Traverse("190.0010", "100.1")).out, HasSubstr("FAILS: angles, length "));
  // Without the fore sight there is no check of the angles.
  EXPECT_THAT(Closures(With(Traverse("190.0010", "100"), "B,Y,100,,,\n", "")).out,
              ContainsRegex("\n +- +- +0\\.0048 +0\\.0057 .* passes"));
}

TEST_F(ClosuresCommand, NothingToCheckIsNoFailure) {
  const Outcome levelling = Closures("[PT]\nA,01,,,10\nN,00,,,\n\n[OBS]\nA,N,,400,1,\n");
  EXPECT_EQ(levelling.status, 0);
  EXPECT_EQ(levelling.out, "");
  EXPECT_THAT(levelling.err, HasSubstr("warning: there are no closure errors"));
  const Outcome distances =
      Closures("[PARAM]\nformat:3\n\n[PT]\nA,10,1,1,\nN,00,,,\n\n[OBS]\nA,N,,400,,\n");
  EXPECT_EQ(distances.status, 0);
  EXPECT_THAT(distances.err, HasSubstr("format 3 have no closure errors"));
}

}  // namespace
}  // namespace brenu::testing
