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

TEST_F(ImportCommand, FailuresWriteNothing) {
  ExpectFailure("what?\n", 2, "no field book of a known format", "import");
  const std::string project = Folder() + "/job.txt";
  EXPECT_EQ(On(kBook, "import -o \"" + project + "\" --control \"" + Folder() + "/none\"").status,
            2);
  EXPECT_EQ(Read(project), "");
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
  EXPECT_THAT(Execute("reduce DovCorrect 5 x 30 2").err, HasSubstr("\"x\" is no value for ETA"));
  EXPECT_EQ(Execute("reduce DovCorrect 5").status, 2);
  EXPECT_THAT(Execute("reduce DovCorrect --help").out, HasSubstr("(eta cos A - xi sin A)"));
}

}  // namespace
}  // namespace brenu::testing
