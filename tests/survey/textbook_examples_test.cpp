// Worked examples of textbooks by the rules of textbooks.  Coordinates, heights and Ghilani's
// standard errors of unit weight are as printed there; the digits beyond, the other standard errors
// and the test values come from a dense solution of the same equations outside this library.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "brenu/brenu.hpp"
#include "support/job.h"

namespace brenu::testing {
namespace {

struct Example {
  std::string file;
  brenu_network network;
  std::int32_t redundancy;
  double m0;
  // H and its standard error, or X, Y and theirs; metres.
  std::vector<std::pair<std::string, std::vector<double>>> points;
  std::string worst;  // the observation of the largest test value, station and target
  double w, tau;
};

const std::vector<Example> kExamples = {
    // C. D. Ghilani, Adjustment Computations, examples 12.1 and 12.2: lengths in units of 1 km for
    // miles and feet for metres.  Printed: 105.150, 104.489, 106.197, and 0.107 ft for weights 12 /
    // L.
    {"[PT]\nX,01,,,100\nY,01,,,107.5\nA,00,,,\nB,00,,,\nC,00,,,\n\n"
     "[OBS]\nX,A,,4000,5.10,\nA,Y,,3000,2.34,\nY,C,,2000,-1.25,\nC,X,,3000,-6.13,\n"
     "A,B,,2000,-0.68,\nY,B,,2000,-3.00,\nB,C,,2000,1.70,\n",
     BRENU_HEIGHTS,
     4,
     0.0309515751,
     {{"A", {105.1504, 0.0327560681}},
      {"B", {104.4892, 0.0297593309}},
      {"C", {106.1972, 0.0290351511}}},
     "YC",
     49.8913104372,
     1.6119150740},
    // E. Baumann, Vermessungskunde 2, 13.4.2: five bench marks, two lines levelled twice.
    {"[PT]\n1,00,,,\n2,00,,,\n3,00,,,\n4,01,,,226.578\n5,00,,,\n6,01,,,213.951\n7,00,,,\n"
     "8,01,,,209.124\n9,01,,,203.771\n10,00,,,\n11,00,,,\n12,00,,,\n13,00,,,\n14,01,,,197.862\n\n"
     "[OBS]\n2,1,,3800,-0.624,\n1,2,,2500,0.6235,\n2,3,,5000,7.7292,\n5,4,,3800,8.2021,\n"
     "6,5,,900,4.4254,\n7,6,,600,1.0502,\n8,7,,1600,3.7782,\n3,8,,1800,1.4813,\n9,8,,2400,5.3523,\n"
     "10,5,,1800,7.4945,\n10,7,,1000,2.0179,\n10,11,,1300,0.495,\n8,11,,1000,2.253,\n"
     "13,11,,1200,11.4908,\n12,8,,2400,4.7158,\n2,9,,1600,3.8582,\n9,12,,3000,0.6374,\n"
     "13,12,,1700,4.5218,\n13,14,,1400,-2.0251,\n14,13,,1200,2.0246,\n",
     BRENU_HEIGHTS,
     11,
     0.000442406615,
     {{"1", {199.289235, 0.000740707}},
      {"7", {212.900967, 0.000265872}},
      {"13", {199.886696, 0.000285177}}},
     "87",
     1.1080712586,
     2.5046444180},
    // Ghilani, example 14.1: a point by three distances.  A redundancy of 1 makes all tau equal.
    {"[PARAM]\nMS:1\nMR:0\n\n[PT]\nA,10,865.40,4527.15,\nB,10,2432.55,2047.25,\nC,10,2865.22,27.15,"
     "\n"
     "U,00,,,\n\n[OBS]\nA,U,,6049.00,,\nB,U,,4736.83,,\nC,U,,5446.49,,\n",
     BRENU_PLANE,
     1,
     0.0976593729,
     {{"U", {6861.316788, 3727.818566, 0.0775263484, 0.1542489076}}},
     "",
     0.0976593729,
     1.0},
    // W. Niemeier, Ausgleichungsrechnung (2008), p. 156: two points set up freely among four
    // others.
    {"[PARAM]\nMO:1.62\nMS:0.005\nMR:0\n\n[PT]\n104,10,26816.143,40686.792,\n106,10,28872.552,"
     "41932.838,\n"
     "113,10,27492.007,42242.231,\n280,10,28835.979,40350.846,\nZ108,00,,,\nZ110,00,,,\n\n"
     "[OBS]\nZ108,280,333.34478560,1098.643,,\nZ108,104,179.33424440,1002.598,,\n"
     "Z108,113,97.44220560,1517.862,,\nZ110,106,31.52233040,1118.689,,\n"
     "Z110,Z108,263.41415320,619.905,,\nZ110,104,214.05192120,1286.215,,\n"
     "Z110,113,117.12180720,961.911,,\n",
     BRENU_PLANE,
     8,
     0.9664031715,
     {{"Z108", {27816.116640, 40759.376930, 0.0030102119, 0.0031270377}},
      {"Z110", {27904.004209, 41373.019266, 0.0028893759, 0.0031157655}}},
     "Z110106",
     1.8233430304,
     1.8867312153},
    // W. Grossmann, Grundzuege der Ausgleichungsrechnung (1969), p. 170: directions to and from a
    // point.
    {"[PARAM]\nMO:8.1\n\n[PT]\nA,10,78594.91,9498.26,\nB,10,75913.25,10367.59,\nC,10,75306.8,9300."
     "43,\n"
     "D,10,75723.68,7115.09,\nE,10,78907.88,7206.65,\nF,10,76701.57,6633.27,\nP,00,,,\n\n"
     "[OBS]\nA,B,0,,,\nA,P,46.51131040,,,\nA,E,115.44301560,,,\nC,B,0,,,\nC,D,220.24110520,,,\n"
     "C,P,264.58268680,,,\nD,E,0,,,\nD,P,53.51517320,,,\nD,C,99.09480600,,,\nD,F,332.07469200,,,\n"
     "P,A,0,,,\nP,B,80.34109560,,,\nP,C,116.28589440,,,\nP,E,303.39061920,,,\n",
     BRENU_PLANE,
     8,
     1.5389257139,
     {{"P", {76607.859254, 8401.863746, 0.0834544807, 0.0642207955}}},
     "DE",
     3.0128499118,
     1.9577617585},
};

std::vector<double> ResultOf(const Context& job, brenu_network network, const std::string& name) {
  const std::int32_t index = job.IndexOf(name).value();
  if (network == BRENU_HEIGHTS) {
    const VerticalResult h = job.Height(index).value();
    return {h.height, h.sigma};
  }
  const PlaneResult p = job.Plane(index).value();
  return {p.x, p.y, p.mx, p.my};
}

// The test value of the observation that goes first, when all do that exceed a little less.
void ExpectWorst(Context& job, brenu_test test, double value, const std::string& worst) {
  constexpr double kLittleLess = 0.999;
  job.SetOptions({BRENU_TEXTBOOK, test, 0, kLittleLess * value, 0});
  job.Snoop();
  const std::vector<TakenOut> all = job.AllTakenOut();
  ASSERT_FALSE(all.empty());
  EXPECT_NEAR(all[0].testValue, value, 1e-5 * value);
  if (worst.empty()) return;
  EXPECT_EQ(all[0].observation.station + all[0].observation.target, worst);
}

TEST(TextbookExamples, StandardErrorsAndTestValues) {
  for (const Example& e : kExamples) {
    SCOPED_TRACE(e.file);
    Context job;
    job.ReadText(e.file);
    job.Adjust();
    const brenu_figures figures = job.Figures(e.network).value();
    EXPECT_EQ(figures.redundancy, e.redundancy);
    EXPECT_NEAR(figures.m0, e.m0, 1e-6 * e.m0);
    for (const auto& [name, values] : e.points) {
      EXPECT_TRUE(Near(ResultOf(job, e.network, name), values, 1e-6)) << name;
    }
    ExpectWorst(job, BRENU_W_TEST, e.w, e.worst);
    ExpectWorst(job, BRENU_TAU_TEST, e.tau, e.worst);
  }
}

}  // namespace
}  // namespace brenu::testing
