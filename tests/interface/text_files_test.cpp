// The two text formats: read, written, and where reading stops.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "support/job.h"
#include "support/line_end.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

bool Open(const Job& job, std::string_view text) {
  return OpenBrenuAdjustFile(job, TempFile(text).Path());
}

bool Load(const Job& job, std::string_view text) {
  return LoadKorvelAdjustFile(job, TempFile(text).Path());
}

std::string Saved(const Job& job) {
  const TempFile file;
  EXPECT_EQ(SaveBrenuAdjustFile(job, file.Path()), 1);
  return file.Text();
}

std::string WithLineEnds(const std::string& text, const std::string& end) {
  std::string result;
  for (const char c : text) result += c == '\n' ? end : std::string(1, c);
  return result;
}

const std::string kFile =
    "[PARAM]\n"
    "MO:2.5\nMS:0.00123457\nMR:5e-06\nLvl1:3\nLvl2:4\nLvl1Limit:7\nLvl2Limit:5\nLimit:3\n"
    "format:1\n"
    "\n"
    "[PT]\n"
    "B,11,3512345.123400,-2000.000000,50.000000\n"
    "A,01,,,0.000001\n"
    "P1,00,,,\n"
    "X,-5,1.000000,,\n"
    "\n"
    "[OBS]\n"
    "A,P1,0.000000,123.456000,,\n"
    "B,A,,,-1.500000,0.000000\n"
    "B,P1,,,,\n";

TEST(ProjectFile, IsWrittenByteForByteAndReadBack) {
  const Job job(
      {{"B", 11, 3512345.1234, -2000, 50}, {"A", 1, 0, 0, 0.000001}, {"P1"}, {"X", -5, 1}},
      {{"B", {{"P1", kNothing}, {"A", {0, -1, -1.5, 0}}}}, {"A", {{"P1", Direction(0, 123.456)}}}},
      AdjParam{2.5, 0.00123456789, 5e-6, 3, 7, 4, 5, 3, 1});
  EXPECT_EQ(Saved(job), kFile);

  // CR LF gives exactly what LF gives, empty last fields included.
  for (const char* end : {"\n", "\r\n"}) {
    const Job back;
    ASSERT_TRUE(Open(back, WithLineEnds(kFile, end)));
    EXPECT_EQ(Saved(back), kFile);
    EXPECT_EQ(back.Index("X"), 3);
    EXPECT_EQ(Bytes(Stored(back, "B", "P1")), Bytes(kNothing));
    EXPECT_EQ(Stored(back, "A", "P1").direction, 0);  // a reading of zero is a reading
    EXPECT_EQ(Stored(back, "B", "A").azimuth, 0);
  }

  // The host's bytes are the name, whatever they mean: what is written here, others open.
  const std::string path = ::testing::TempDir() + "caf\xC3\xA9 brenu.txt";
  ASSERT_EQ(SaveBrenuAdjustFile(job, path.c_str()), 1);
  std::ifstream file(path, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), WithLineEnds(kFile, kLineEnd));
  file.close();
  EXPECT_TRUE(OpenBrenuAdjustFile(Job(), path.c_str()));
  std::remove(path.c_str());
}

// Without point lines the observations keep six significant digits.  Observations outlive all
// points when both their names were lost in refused renamings.
TEST(ProjectFile, OnlyAPointLineBringsTheDecimals) {
  const Job job({{"A"}, {"B"}, {"C"}, {"D"}}, {{"A", {{"C", Distance(1234.56789)}}},
                                               {"B", {{"D", Distance(1)}}},
                                               {"D", {{"B", Distance(1)}}}});
  EXPECT_EQ(SetPoint(job, 0, MakePoint("B")), -1);
  EXPECT_EQ(SetPoint(job, 2, MakePoint("D")), -1);
  EXPECT_NE(Saved(job).find("\nA,C,,1234.567890,,\n"), std::string::npos);
  while (GetPointCount(job) > 0) DeletePoint(job, 0);
  const std::string text = Saved(job);
  EXPECT_EQ(text.substr(text.find("[PT]")), "[PT]\n\n[OBS]\nA,C,,1234.57,,\n");
}

TEST(ProjectFile, AGradeSetsItsLimitUntilALimitFollows) {
  const auto expectLimits = [](const std::string& lines, int32_t limit1, int32_t limit2) {
    const Job job;
    EXPECT_TRUE(Open(job, "[PARAM]\n" + lines)) << lines;
    EXPECT_EQ(GetAdjParam(job).Lvl1Limit, limit1) << lines;
    EXPECT_EQ(GetAdjParam(job).Lvl2Limit, limit2) << lines;
    EXPECT_EQ(GetAdjParam(job).MO, 2.5) << lines;
  };
  const int32_t limits1[] = {40, 40, 4, 12, 20, 40, 35, 40, 40, 40};
  const int32_t limits2[] = {24, 24, 1, 3, 5, 10, 16, 24, 40, 24};
  for (int grade = 0; grade < 10; ++grade) {
    const std::string text = std::to_string(grade) + "\n";
    expectLimits("Lvl1:" + text + "Lvl2:" + text, limits1[grade], limits2[grade]);
  }
  expectLimits("Lvl1:3\nLvl1Limit:99\n", 99, 5);
  expectLimits("Lvl1Limit:99\nLvl1:3\n", 12, 5);
  expectLimits("Lvl2:8\nLvl2Limit:-1\n", 20, -1);
  expectLimits("lvl1:3\nLvl1 :3\n MO:9\nMO\nMO:\nOther:1\n[PT]\n", 20, 5);  // no keys
  const Job job;
  EXPECT_TRUE(Open(job, "[PARAM]\nMS:3:4\nMR: 2e-6ppm\nformat:3x\nLimit:-2\n"));
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(AdjParam{2.5, 3, 2e-6, 4, 20, 4, 5, -2, 3}));
}

TEST(ProjectFile, LinesThatFit) {
  const Job job;
  ASSERT_TRUE(Open(job,
                   "skipped\n[OBSER]\n"
                   "[PT]\nA,11,1,2,3\nB,10,1,2\n\n"  // B: four pieces
                   "[PARAM]\nMO:7\n\nskipped,too\n\n\n"
                   "[OBS]\nA,B,30.3,,,\nB,A,,5,6,7"));  // A: five; no line feed at the end
  EXPECT_EQ(GetAdjParam(job).MO, 7);
  PointData b{};
  EXPECT_EQ(GetPoint(job, 1, &b), 1);
  EXPECT_TRUE(Near({b.y, b.h}, {2, 0}, 0));
  EXPECT_EQ(Bytes(Stored(job, "A", "B")), Bytes(ObsData{0, 30.3, 0, -1}));
  EXPECT_EQ(Bytes(Stored(job, "B", "A")), Bytes(ObsData{5, -1, 6, 7}));
}

// What stands before the line stays; the good line after it is not read.
void ExpectRefused(bool (*read)(const Job&, std::string_view), const std::string& start,
                   const std::vector<std::pair<const char*, int32_t>>& rests) {
  for (const auto& [rest, keptObservations] : rests) {
    const Job job;
    EXPECT_FALSE(read(job, start + rest)) << rest;
    EXPECT_EQ(GetAdjParam(job).MO, 7);
    EXPECT_EQ(GetPointCount(job), 2U) << rest;
    EXPECT_EQ(GetObsDataCount(job, 0), keptObservations) << rest;
  }
}

TEST(ProjectFile, FailsAtTheFirstLineThatDoesNotFit) {
  ExpectRefused(Open, "[PARAM]\nMO:7\n\n[PT]\nA,10,1,2,3\nB,00,,,\n",
                {{"C,00,1,2,3,4\nD,00,,,\n", 0},  // six pieces
                 {"C,00,1\nD,00,,,\n", 0},        // three
                 {"C,00,,\n", 0},                 // three and a dropped one
                 {"A,00,,,\n", 0},                // a name taken
                 {"[OBS]\nA,B,1,2,3,4\n", 0},     // a header inside a section is data
                 {"\n[PT]\nC,00,,,\n", 0},        // a second section counts from 0 again
                 {"\n[OBS]\nA,B,1,2,3,4\nA,B,1,2,3,4\nB,A,1,2,3,4\n", 1},  // the pair again
                 {"\n[OBS]\nA,B,1,2,3,4\nA,C,1,2,3,4\n", 1},               // no such target
                 {"\n[OBS]\nC,A,1,2,3,4\n", 0},                            // no such station
                 {"\n[OBS]\nA,A,1,2,3,4\n", 0},                            // both the same
                 {"\n[OBS]\nA,B,1,2,3,4,5\n", 0},
                 {"\n[OBS]\nA,B,1,\n", 0}});
  EXPECT_FALSE(Open(Job(), "[OBS]\nA,B,1,2,3,4\n\n[PT]\nA,10,1,2,3\nB,00,,,\n"));
}

TEST(StationFile, FailsAtTheFirstLineThatDoesNotFit) {
  ExpectRefused(Load, "[PARA]\nMO:7\n[STATION]\nA,10,1,2,3\nB,0\n",
                {{"C\n", 0},
                 {"C,\n", 0},  // the empty type is dropped
                 {"A,0\n", 0},
                 {"[PARA]\nMO\n[STATION]\n", 0},
                 {"\n[PARA]\nMO:\n", 0},  // the empty value is dropped
                 {"\n[PARA]\nMO:1:2\n", 0},
                 {"[OBSER]\nA,B,1,2,3\nB,A,1,2\n", 1},
                 {"[OBSER]\nA,B,1,2,3\nB,A,1,2,\n", 1},
                 {"[OBSER]\nA,B,1,2,3\nA,B,1,2,3\n", 1},
                 {"[OBSER]\nA,C,1,2,3\n", 0},
                 {"[OBSER]\nC,A,1,2,3\n", 0}});
}

TEST(ProjectFile, NamesFillAtMostTheirFieldAndEndAtANul) {
  const std::string longest(127, 'n');
  const std::string nul("A\0x", 3);
  const Job job;
  ASSERT_TRUE(Open(job, "[PT]\n" + nul + ",00,,,\n" + longest + ",00,,,\n\n[OBS]\n" + longest +
                            "," + nul + ",,1,,\n"));
  EXPECT_EQ(job.NameAt(0), "A");
  EXPECT_EQ(Stored(job, longest, "A").distance, 1);
  const Job refused;
  EXPECT_FALSE(Open(refused, "[PT]\n" + longest + "n,00,,,\n"));
  EXPECT_EQ(GetPointCount(refused), 0U);
}

TEST(ProjectFile, NeedsAPathThatExistsAndFreeIndices) {
  Job job;
  const std::string nowhere = ::testing::TempDir() + "no_such_folder/file.txt";
  EXPECT_FALSE(OpenBrenuAdjustFile(job, nowhere.c_str()));
  EXPECT_FALSE(LoadKorvelAdjustFile(job, nowhere.c_str()));
  EXPECT_EQ(SaveBrenuAdjustFile(job, nowhere.c_str()), 0);
  EXPECT_TRUE(Open(job, ""));
  job.Add("Other");
  EXPECT_FALSE(Open(job, kFile));
  EXPECT_EQ(GetPointCount(job), 1U);
  EXPECT_EQ(GetAdjParam(job).Lvl1Limit, 7);  // what came before the clash
  DeletePoint(job, 0);
  EXPECT_TRUE(Open(job, kFile));
}

TEST(StationFile, IsReadIntoParametersPointsAndObservations) {
  const Job job;
  ASSERT_TRUE(Load(job,
                   "skipped\n"
                   "[PARA]\nMO:1.5\nMS:0.002\nMR:3e-6\nLevel1:3\nLevel:7\nLimit:2\nFormat:3\n"
                   "Lvl1:9\nLvl1Limit:1\nformat:8\n"  // keys of the other format
                   "[STATION]\nA,11,1,2,3,surplus\nB,1\nC,10,5\nD,,,6,\n"
                   "[OBSER]\nA,B,12.3,100,-2\nA,C,,50,1,surplus\n"
                   "\nskipped"));
  EXPECT_EQ(Bytes(GetAdjParam(job)), Bytes(AdjParam{1.5, 0.002, 3e-6, 3, 12, 7, 24, 2, 3}));
  EXPECT_EQ(GetPointCount(job), 4U);
  const PointData points[] = {MakePoint("A", 11, 1, 2, 3), MakePoint("B", 1), MakePoint("C", 10, 5),
                              MakePoint("D", 0, 0, 6)};
  for (int32_t i = 0; i < 4; ++i) {
    PointData point{};
    EXPECT_EQ(GetPoint(job, i, &point), i);
    EXPECT_EQ(Bytes(point), Bytes(points[i]));
  }
  EXPECT_EQ(Bytes(Stored(job, "A", "B")), Bytes(ObsData{100, 12.3, -2, -1}));
  // An empty direction is a reading of zero here, not an absent one.
  EXPECT_EQ(Bytes(Stored(job, "A", "C")), Bytes(ObsData{50, 0, 1, -1}));
}

TEST(StationFile, RefusesAProjectFile) {
  const Job job;
  EXPECT_FALSE(Load(job, "[PARAM]\nMO:7\n\n[STATION]\nA,11\n"));
  EXPECT_EQ(GetPointCount(job), 0U);
  // Only its first line tells.
  EXPECT_TRUE(Load(job, "\n[PARAM]\n[STATION]\nA,11\n"));
  EXPECT_EQ(GetPointCount(job), 1U);
}

TEST(StationFile, AHeaderFollowedByACarriageReturnIsNone) {
  const Job job;
  const std::string end = kReturnAndLineEnd;
  EXPECT_TRUE(Load(job, "[STATION]" + end + "A,11,1,2,3" + end));
  EXPECT_EQ(GetPointCount(job), 0U);
  // Inside a section it is data.
  EXPECT_FALSE(Load(job, "[PARA]\nMO:1\n[STATION]" + end + "A,11,1,2,3" + end));
}

}  // namespace
}  // namespace brenu::testing
