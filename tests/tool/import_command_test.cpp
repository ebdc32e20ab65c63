#include <cmath>
#include <cstdlib>

#include "tool/program.h"

namespace brenu::testing {
namespace {

struct ImportCommand : ProgramTest {};

// A triangle with two known points, the third by the cosine rule; its angles at A and B are 60
// degrees, the sides 100 m.
const char* const kBook =
    "110001+0000000A 84..10+00000000 85..10+00100000\n"
    "110002+0000000B 21.323+00000000 22.323+09000000 31..00+00100000\n"
    "110003+0000000C 21.323+06000000 22.323+09000000 31..00+00100000\n"
    "110004+0000000A 21.323+06000000\n"
    "110005+0000000B 84..10+00000000 85..10+00200000\n"
    "110006+0000000C 21.323+12000000 22.323+09000000 31..00+00100000\n"
    "110007+0000000A 21.323+18000000 22.323+09000000 31..00+00100000\n";

TEST_F(ImportCommand, ProjectGoesThroughTheAdjustment) {
  const std::string project = Folder() + "/job.txt";
  const Outcome run = On(kBook, "import -o \"" + project + "\" --log \"" + Folder() +
                                    "/log\" --control \"" + Write(kBook) + "\"");
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, HasSubstr("warning: line 4: the station A is sighted as its own target"));
  EXPECT_THAT(run.out, HasSubstr("GSI-8, 7 lines"));
  EXPECT_THAT(run.out, HasSubstr("3 points, 4 directions, 4 distances"));
  EXPECT_THAT(Read(Folder() + "/log"), HasSubstr("line 4: left out (sight-of-station)"));
  const Outcome adjusted = Execute("adjust \"" + project + "\"");
  EXPECT_EQ(adjusted.status, 0);
  EXPECT_THAT(adjusted.out, ContainsRegex("C +150\\.000. +86\\.602"));
}

TEST_F(ImportCommand, SpeaksChinese) {
  const Outcome run =
      On(kBook, "import --lang zh -o \"" + Folder() + "/job.txt\" --log \"" + Folder() + "/log\"");
  EXPECT_THAT(run.err, HasSubstr("警告：第 4 行："));
  EXPECT_THAT(run.out, HasSubstr("GSI-8, 7 行; 测站 2, 照准 4, 舍去 1\n"));
  EXPECT_THAT(run.out, HasSubstr("3 个点, 4 个方向, 4 条边长"));
  EXPECT_THAT(Read(Folder() + "/log"), HasSubstr("第 4 行: 舍去 (sight-of-station)"));
}

TEST_F(ImportCommand, FailuresWriteNothing) {
  ExpectFailure("what?\n", 2, "no field book of a known format", "import");
  const std::string project = Folder() + "/job.txt";
  EXPECT_EQ(On(kBook, "import -o \"" + project + "\" --control \"" + Folder() + "/none\"").status,
            2);
  EXPECT_EQ(Read(project), "");
}

// 1000 m at 60 degrees from the zenith; the effects are those of
// tests/fieldbook/reduction_test.cpp.
TEST_F(ImportCommand, OptionsAreSteps) {
  const std::string sight =
      "110001+0000000A 84..10+00100000 85..10+00200000 86..10+00010000 88..10+00001500\n"
      "110002+0000000B 21.322+10000000 22.323+06000000 31..00+01000000 87..10+00001700\n";
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "866.025404"},
      {"--refraction 0.13", "865.961855"},
      {"--constant 20 --scale 30", "866.068705"},
      {"--atmosphere 950,25,10,0.85 --reference-air 1013.25,15,0", "866.048548"},
      {"--reference-air 1013.25,15,0 --atmosphere 950 25 10 0.85", "866.048548"},
      {"--ellipsoid 637.1", "865.938810"},
      {"--projection-y 63710 --projection-scale 0.9996", "865.722295"}};
  for (const auto& [options, distance] : rows) {
    const Outcome run = On(sight, "import " + options + " --");
    EXPECT_THAT(run.out, HasSubstr("A,B,90.000000," + distance + ",,")) << options;
  }
  const std::string project = Folder() + "/job.txt";
  EXPECT_THAT(On(sight, "import --trig-heights -o \"" + project + '"').out,
              HasSubstr("1 height difference\n"));
  EXPECT_THAT(Read(Folder() + "/job-heights.txt"), HasSubstr(",499.800000,"));
}

// Two faces, two sets and two setups: what is left of each when they are not joined.
TEST_F(ImportCommand, StepsCanBeSwitchedOff) {
  const std::string setup =
      "110001+0000000A 84..10+00100000 85..10+00200000\n"
      "110002+0000000B 21.322+10000000 22.322+10000000 31..00+00100000\n"
      "110003+0000000B 21.322+30000200 22.322+30000000 31..00+00100002\n"
      "110004+0000000B 21.322+10000000 22.322+10000000 31..00+00100011\n";
  const auto distance = [&](const std::string& options, const std::string& book) {
    const std::string out = On(book, "import " + options + " --").out;
    const std::size_t line = out.find("A,B,90.");
    const std::size_t begin = out.find(',', line + 4) + 1;
    return line == out.npos ? "" : out.substr(begin, out.find(',', begin) - begin);
  };
  EXPECT_EQ(distance("", setup), "100.006000");            // ((0 + 2) / 2 + 11) / 2
  EXPECT_EQ(distance("--no-faces", setup), "100.005500");  // (0 + 11) / 2
  EXPECT_EQ(distance("--no-sets", setup), "100.001000");   // (0 + 2) / 2
  const std::string again =
      "110005+0000000A 84..10+00100000 85..10+00200000\n"
      "110006+0000000B 21.322+10000000 22.322+10000000 31..00+00100030\n";
  const std::string first = setup.substr(0, setup.find("110003"));
  EXPECT_EQ(distance("", first + again), "100.015000");
  EXPECT_EQ(distance("--no-joining", first + again), "100.000000");
}

TEST_F(ImportCommand, ConversionsLoseNothing) {
  const auto convert = [&](const std::string& from, const char* to, const char* option = "") {
    const std::string out = Folder() + '/' + to;
    EXPECT_EQ(Execute("convert \"" + from + "\" \"" + out + "\" " + option).status, 0);
    return out;
  };
  const auto data = [](const std::string& text) { return text.substr(text.find("[PT]")); };
  for (const char* name : {"combined", "triangulation", "levelling", "station-file"}) {
    const std::string in = std::string(BRENU_EXAMPLES "/") + name + ".txt";
    const std::string project = convert(in, "p.txt", "--to project");
    EXPECT_EQ(data(Read(convert(convert(project, "a.gkf"), "b.txt"))), data(Read(project)));
    // There every line has a direction, and none an azimuth.
    if (in.find("station-file") == in.npos) continue;
    EXPECT_EQ(Read(convert(convert(project, "s.txt"), "c.txt")), Read(project));
  }
}

// The examples of docs/reductions.md.
TEST_F(ImportCommand, Reductions) {
  EXPECT_EQ(Execute("reduce DovCorrect 5 -3 30 2").out, "correction -0.178028744 arc-seconds\n");
  EXPECT_THAT(Execute("reduce distancereduction 100 1.6 1500 1.6 5000 45 1.0471975511966r").out,
              HasSubstr("4799.397485391 m"));
  EXPECT_THAT(Execute("reduce CentreCorrect .3 60 .2 30 1000 0").out,
              HasSubstr("direction 0.0114239"));  // 74.2396"
  // Arguments that differ wherever an example allows it, so that none may be exchanged.
  const std::string ellipsoid = "6378137 6356752.3141 ";
  const std::vector<std::pair<std::string, double>> rows = {
      {"HeightMarkCorrect " + ellipsoid + "2000 30 45", 0.163053025},
      {"SectionCorrect " + ellipsoid + "30000 30 45", -0.0122494776},
      {"DirectionCorrect 0 100000 10000 104000 6371000", 2.5916723724},
      {"DistanceCorrect 100000 104000 10000 6371000", 1.281799408},
      {"PlaneAzimuthCorrect 40 30 0 100000 10000 104000 " + ellipsoid + "6371000", 39.285208},
      {"AstronomicalAzimuthReduction 60 100.0010 30 100", 59.5955},
      {"MeteorologicalCorrect 0 0 0 1 1013.24872 0 0 1", 29255863999993.0},
      {"MeteorologicalCorrect2 950 25 10 .85 1013.25 15 0 2000", 0.053449786},
      {"ConstAddMultiplyCorrect 5 3 1500", 1500.0095},
      {"ProjectionCorrect 1580 20 6400000 900 0 1000", 999.7500625},
      {"ProjectionCorrect 100 20 6400000 900 1 1000", 999.875},
      {"GetRm 30 6378137 6399593.6259 .0820944", 6359470.807},
      {"GetRn 6399593.6259 .0820944 30", 6349455.95}};
  for (const auto& [arguments, expected] : rows) {
    const std::string out = Execute("reduce " + arguments).out;
    const double value = std::atof(out.substr(out.find(' ') + 1).c_str());
    EXPECT_NEAR(value, expected, 1e-9 + std::fabs(expected) * 1e-8) << arguments << '\n' << out;
  }
  EXPECT_THAT(Execute("reduce GaussCorrect 100 20 6400000 900 1 1000 60000 68000 6400000").out,
              ContainsRegex("projected +999\\.875.*\n.*grid +999\\.92505884"));
  EXPECT_THAT(Execute("reduce DovCorrect 5 x 30 2").err, HasSubstr("\"x\" is no value for ETA"));
  EXPECT_EQ(Execute("reduce DovCorrect 5").status, 2);
  EXPECT_THAT(Execute("reduce DovCorrect --help").out, HasSubstr("(eta cos A - xi sin A)"));
}

}  // namespace
}  // namespace brenu::testing
