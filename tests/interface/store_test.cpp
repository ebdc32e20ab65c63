// Points and observations as the host enters and edits them.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

// The stored distance of a pair; -1 when the pair is not stored.
double DistanceOf(const Job& job, int32_t station, const char* target) {
  ObsData obs{};
  return GetObsData(job, station, target, &obs) == station ? obs.distance : -1.0;
}

// A, B, C under 0, 1, 2, each observed from each other; the distance tells the pair.
struct Triangle : Job {
  Triangle() {
    const std::string names[] = {"A", "B", "C"};
    for (const std::string& name : names) Add(name);
    for (int i = 0; i < 3; ++i) {
      for (int k = 0; k < 3; ++k) Observe(names[i], names[k], Distance(10 * (i + 1) + k + 1));
    }
  }
};

TEST(Points, AddRefusesATakenIndexOrName) {
  const Job job;
  EXPECT_EQ(AddPoint(job, -1, MakePoint("A")), -1);
  EXPECT_EQ(AddPoint(job, 5, MakePoint("A")), 5);
  EXPECT_EQ(AddPoint(job, 5, MakePoint("B")), -1);
  EXPECT_EQ(AddPoint(job, 6, MakePoint("A")), -1);
  EXPECT_EQ(AddPoint(job, 6, MakePoint("a")), 6);  // case counts
  EXPECT_EQ(AddPoint(job, 3, MakePoint("")), 3);   // an empty name is a name
  EXPECT_EQ(AddPoint(job, 4, MakePoint("")), -1);
  EXPECT_EQ(GetPointNum(job, ""), 3);
  EXPECT_EQ(GetPointNum(job, "B"), -1);
  EXPECT_EQ(GetPointCount(job), 3U);
}

TEST(Points, AreGivenBackByteForByte) {
  const Job job;
  PointData in = MakePoint("A", -123, 1.5, -2.5, 1e300);
  in.reserved = 77;
  std::memcpy(in.name + 2, "rest", 4);  // what stands behind the NUL is no part of the name
  AddPoint(job, 0, in);
  PointData out{};
  EXPECT_EQ(GetPoint(job, 0, &out), 0);
  EXPECT_EQ(Bytes(out), Bytes(in));
  PointData original{};
  EXPECT_EQ(GetOriginalPoint(job, 0, &original), 0);
  EXPECT_EQ(Bytes(original), Bytes(in));
  EXPECT_EQ(GetPointNum(job, "A"), 0);
  EXPECT_EQ(GetPoint(job, 1, &out), -1);
  EXPECT_EQ(GetOriginalPoint(job, 1, &out), -1);
}

TEST(Points, ANameThatFillsItsFieldIsCut) {
  Job job;
  const std::string full(128, 'x');
  const std::string cut(127, 'x');
  EXPECT_EQ(job.Add(full), 0);
  EXPECT_EQ(job.NameAt(0), cut);
  EXPECT_EQ(job.Index(cut), 0);
  EXPECT_EQ(job.Index(full), -1);
  EXPECT_EQ(job.Add(cut), -1);
  job.Add("A");
  EXPECT_EQ(job.Observe("A", cut, Distance(1)), 1);
  EXPECT_EQ(SetPoint(job, 0, MakePoint(std::string(128, 'y'))), 0);
  EXPECT_EQ(job.NameAt(0), std::string(127, 'y'));
  EXPECT_EQ(DistanceOf(job, 1, std::string(127, 'y').c_str()), 1);
}

TEST(DeletePoint, MovesTheLaterPointsDownKeepsGapsAndRemovesObservations) {
  const Triangle job;
  AddPoint(job, 9, MakePoint("J"));
  EXPECT_EQ(DeletePoint(job, 1), 1);
  const std::string names[] = {"A", "C", "J"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(job.NameAt(i), names[i]);
    EXPECT_EQ(job.Index(names[i]), i);
  }
  EXPECT_EQ(job.NameAt(9), "none");
  EXPECT_EQ(job.Index("B"), -1);
  EXPECT_EQ(DistanceOf(job, 0, "B"), -1);
  EXPECT_EQ(DistanceOf(job, 0, "C"), 13);
  EXPECT_EQ(DistanceOf(job, 1, "A"), 31);
  EXPECT_EQ(GetObsDataCount(job, 1), 1);
  EXPECT_EQ(DeletePoint(job, 9), -1);
  EXPECT_EQ(AddPoint(job, 5, MakePoint("B")), 5);
  EXPECT_EQ(GetObsDataCount(job, 5), 0);
}

TEST(SetPoint, CarriesTheNewNameThroughTheObservations) {
  const Triangle job;
  EXPECT_EQ(SetPoint(job, 0, MakePoint("D", 10, 7, 8, 9)), 0);
  EXPECT_EQ(job.Index("A"), -1);
  EXPECT_EQ(GetObsDataCount(job, 0), 2);
  EXPECT_EQ(DistanceOf(job, 0, "B"), 12);
  EXPECT_EQ(DistanceOf(job, 1, "D"), 21);
  EXPECT_EQ(DistanceOf(job, 1, "A"), -1);
  EXPECT_EQ(DistanceOf(job, 2, "D"), 31);
  EXPECT_EQ(SetPoint(job, 0, MakePoint("D")), 0);  // the same name: never refused
  EXPECT_EQ(SetPoint(job, 3, MakePoint("E")), -1);
}

TEST(SetPoint, OverwritesEvenWhenItRefusesTheNewName) {
  const Triangle job;
  EXPECT_EQ(SetPoint(job, 0, MakePoint("B", 11)), -1);  // B is a station
  EXPECT_EQ(job.NameAt(0), "B");
  EXPECT_EQ(job.Index("A"), -1);
  EXPECT_EQ(job.Index("B"), 0);            // the first of the two
  EXPECT_EQ(DistanceOf(job, 0, "C"), 23);  // now read as B's own
  EXPECT_EQ(DistanceOf(job, 2, "A"), 31);  // keeps the old name
}

TEST(SetPoint, AcceptsTheNameOfAPointThatIsNoStation) {
  Job job;
  for (const char* name : {"A", "B", "C"}) job.Add(name);
  job.ObserveAll({{"A", "B", Distance(12)}, {"A", "C", Distance(13)}});
  EXPECT_EQ(SetPoint(job, 2, MakePoint("B")), 2);
  EXPECT_EQ(job.Index("B"), 1);
  EXPECT_EQ(GetObsDataCount(job, 0), 1);
  EXPECT_EQ(DistanceOf(job, 0, "B"), 13);  // the renamed target replaces the other one
  EXPECT_EQ(SetPoint(job, 1, MakePoint("X")), 1);
  EXPECT_EQ(job.Index("B"), 2);
  EXPECT_EQ(job.Add("B"), -1);
}

TEST(Observations, AreReadOverwrittenAndDeleted) {
  const Triangle job;
  const ObsData in = {1.25, 0.0, -3.5, 359.5959};
  EXPECT_EQ(SetObsData(job, 0, "B", in), 0);
  ObsData out{};
  EXPECT_EQ(GetObsData(job, 0, "B", &out), 0);
  EXPECT_EQ(Bytes(out), Bytes(in));
  EXPECT_EQ(SetObsData(job, 0, "X", in), -1);
  EXPECT_EQ(GetObsDataCount(job, 0), 2);
  EXPECT_EQ(DeleteObsData(job, 0, "X"), -1);
  EXPECT_EQ(DeleteObsData(job, 0, "B"), 0);
  EXPECT_EQ(DeleteObsData(job, 0, "C"), 0);
  EXPECT_EQ(DeleteObsData(job, 0, "C"), -1);
  EXPECT_EQ(GetObsDataCount(job, 0), 0);
  // The emptied station is still one: its name cannot be taken by renaming.
  EXPECT_EQ(SetPoint(job, 1, MakePoint("A")), -1);
}

TEST(Observations, AddRefusesWhatHasNoPlaceAndTakesTwoTargetsAtOnce) {
  const Triangle job;
  EXPECT_EQ(AddObsData(job, 3, "B", Distance(1)), -1);
  EXPECT_EQ(AddObsData(job, 0, "A", Distance(1)), -1);
  EXPECT_EQ(AddObsData(job, 0, "X", Distance(1)), -1);
  EXPECT_EQ(AddObsData(job, 0, "B", Distance(2)), -1);
  EXPECT_EQ(DistanceOf(job, 0, "B"), 12);
  AddPoint(job, 3, MakePoint("D"));
  AddPoint(job, 4, MakePoint("E"));
  EXPECT_EQ(AddObsData2(job, 3, "A", "B", Distance(1), Distance(2), 0), 1);
  EXPECT_EQ(DistanceOf(job, 3, "A"), 1);
  EXPECT_EQ(DistanceOf(job, 3, "B"), 2);
  // Nothing stored for the pair yet: there is nothing to turn the readings onto.
  EXPECT_EQ(AddObsData2(job, 4, "A", "B", Distance(3), Distance(4), 1), 1);
  EXPECT_EQ(DistanceOf(job, 4, "B"), 4);
}

}  // namespace
}  // namespace brenu::testing
