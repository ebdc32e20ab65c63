#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/job.h"
#include "support/line_end.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

bool Load(const Job& job, std::string_view text) {
  return LoadKorvelAdjustFile(job, TempFile(text).Path());
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

TEST(StationFile, FailsAtTheFirstLineThatDoesNotFit) {
  const std::string start = "[PARA]\nMO:7\n[STATION]\nA,10,1,2,3\nB,0\n";
  const std::pair<const char*, int32_t> cases[] = {
      // with the observations that are kept
      {"C\n", 0},
      {"C,\n", 0},  // the empty type is dropped
      {"A,0\n", 0},
      {"[PARA]\nMO\n[STATION]\n", 0},
      {"\n[PARA]\nMO:\n", 0},  // the empty value is dropped
      {"\n[PARA]\nMO:1:2\n", 0},
      {"[OBSER]\nA,B,1,2,3\nB,A,1,2\n", 1},
      {"[OBSER]\nA,B,1,2,3\nB,A,1,2,\n", 1},
      {"[OBSER]\nA,B,1,2,3\nA,B,1,2,3\n", 1},
      {"[OBSER]\nA,C,1,2,3\n", 0},
      {"[OBSER]\nC,A,1,2,3\n", 0},
  };
  for (const auto& [rest, obsCount] : cases) {
    const Job job;
    EXPECT_FALSE(Load(job, start + rest)) << rest;
    EXPECT_EQ(GetAdjParam(job).MO, 7) << rest;
    EXPECT_EQ(GetPointCount(job), 2U) << rest;
    EXPECT_EQ(GetObsDataCount(job, 0), obsCount) << rest;
  }
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
