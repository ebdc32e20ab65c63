// Points and observations as the host enters and edits them.
#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <map>
#include <random>
#include <string>

#include "support/job.h"

namespace brenu::testing {
namespace {

// The stored distance of a pair; -1 when the pair is not stored.
double DistanceOf(const Job& job, int32_t station, const std::string& target) {
  ObsData obs{};
  return GetObsData(job, station, target.c_str(), &obs) == station ? obs.distance : -1.0;
}

// A, B, C under 0, 1, 2, each observed from each other; the distance tells the pair.
struct Triangle : Job {
  Triangle() : Job({{"A"}, {"B"}, {"C"}}) {
    for (const char from : {'A', 'B', 'C'}) {
      for (const char to : {'A', 'B', 'C'}) {
        Observe({from}, {to}, Distance(10 * (from - '@') + to - '@'));
      }
    }
  }
};

TEST(Points, AddRefusesATakenIndexOrName) {
  const Job job;
  const struct {
    int32_t index;
    const char* name;
    int32_t result;
  } kCases[] = {{-1, "A", -1}, {5, "A", 5}, {5, "B", -1}, {6, "A", -1}, {6, "a", 6},  // case counts
                {3, "", 3},  // an empty name is a name
                {4, "", -1}};
  for (const auto& c : kCases) EXPECT_EQ(AddPoint(job, c.index, MakePoint(c.name)), c.result);
  EXPECT_EQ(job.Index(""), 3);
  EXPECT_EQ(job.Index("B"), -1);
  EXPECT_EQ(GetPointCount(job), 3U);
}

TEST(Points, AreGivenBackByteForByte) {
  const Job job;
  PointData in = MakePoint("A", -123, 1.5, -2.5, 1e300);
  in.reserved = 77;
  std::memcpy(in.name + 2, "rest", 4);  // what stands behind the NUL is no part of the name
  AddPoint(job, 0, in);
  for (const auto get : {GetPoint, GetOriginalPoint}) {
    PointData out{};
    EXPECT_EQ(get(job, 0, &out), 0);
    EXPECT_EQ(Bytes(out), Bytes(in));
    EXPECT_EQ(get(job, 1, &out), -1);
  }
  EXPECT_EQ(GetPointNum(job, "A"), 0);
}

TEST(Points, ANameThatFillsItsFieldIsCut) {
  const std::string full(128, 'x');
  const std::string cut(127, 'x');
  const std::string other(127, 'y');
  Job job({{full}, {"A"}});
  EXPECT_EQ(job.NameAt(0), cut);
  EXPECT_EQ(job.Index(cut), 0);
  EXPECT_EQ(job.Index(full), -1);
  EXPECT_EQ(job.Add(cut), -1);
  EXPECT_EQ(job.Observe("A", cut, Distance(1)), 1);
  EXPECT_EQ(SetPoint(job, 0, MakePoint(other + 'y')), 0);
  EXPECT_EQ(job.NameAt(0), other);
  EXPECT_EQ(DistanceOf(job, 1, other), 1);
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
  EXPECT_TRUE(Near({DistanceOf(job, 0, "B"), DistanceOf(job, 0, "C"), DistanceOf(job, 1, "A")},
                   {-1, 13, 31}, 0));
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
  EXPECT_TRUE(Near({DistanceOf(job, 0, "B"), DistanceOf(job, 1, "D"), DistanceOf(job, 2, "D"),
                    DistanceOf(job, 1, "A")},
                   {12, 21, 31, -1}, 0));
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
  Job job({{"A"}, {"B"}, {"C"}}, {{"A", {{"B", Distance(12)}, {"C", Distance(13)}}}});
  EXPECT_EQ(SetPoint(job, 2, MakePoint("B")), 2);
  EXPECT_EQ(job.Index("B"), 1);
  EXPECT_EQ(GetObsDataCount(job, 0), 1);
  EXPECT_EQ(DistanceOf(job, 0, "B"), 13);  // the renamed target replaces the other one
  EXPECT_EQ(SetPoint(job, 1, MakePoint("X")), 1);
  EXPECT_EQ(job.Index("B"), 2);
  EXPECT_EQ(job.Add("B"), -1);
}

TEST(Observations, AreAddedOverwrittenAndDeletedWhereThereIsAPlaceForThem) {
  const Triangle job;
  const ObsData in = {1.25, 0.0, -3.5, 359.5959};
  EXPECT_EQ(SetObsData(job, 0, "B", in), 0);
  EXPECT_EQ(Bytes(Stored(job, "A", "B")), Bytes(in));
  EXPECT_EQ(SetObsData(job, 0, "X", in), -1);
  for (const char* target : {"A", "X", "C"}) EXPECT_EQ(AddObsData(job, 0, target, in), -1);
  EXPECT_EQ(AddObsData(job, 3, "B", in), -1);
  EXPECT_EQ(DistanceOf(job, 0, "C"), 13);
  EXPECT_EQ(GetObsDataCount(job, 0), 2);
  EXPECT_EQ(DeleteObsData(job, 0, "X"), -1);
  EXPECT_EQ(DeleteObsData(job, 0, "B"), 0);
  EXPECT_EQ(DeleteObsData(job, 0, "C"), 0);
  EXPECT_EQ(DeleteObsData(job, 0, "C"), -1);
  EXPECT_EQ(GetObsDataCount(job, 0), 0);
  // The emptied station is still one: its name cannot be taken by renaming.
  EXPECT_EQ(SetPoint(job, 1, MakePoint("A")), -1);
}

// Names, indices and their order against a plain list, over thousands of edits; indices far apart,
// and names that several points bear after a renaming.
TEST(Points, AnyEditsLeaveThemWhereTheyBelong) {
  const Job job;
  std::map<int32_t, std::string> model;
  std::mt19937 random;
  const auto pick = [&](unsigned count) { return static_cast<int32_t>(random() % count); };
  const auto nameOf = [](int32_t k) { return "point " + std::to_string(k); };
  const auto firstOf = [&](const std::string& name) {
    for (const auto& [index, other] : model) {
      if (other == name) return index;
    }
    return -1;
  };
  int wrong = 0;
  for (int step = 0; step < 6000; ++step) {
    const int32_t index = pick(20) == 0 ? 1000000 + pick(5) : pick(400);
    const std::string name = nameOf(pick(500));
    const auto place = model.find(index);
    switch (pick(5)) {
      case 0:
        DeletePoint(job, index);
        if (place == model.end()) break;
        for (auto next = std::next(place), to = place; next != model.end(); to = next++) {
          to->second = next->second;
        }
        model.erase(std::prev(model.end()));
        break;
      case 1:
        SetPoint(job, index, MakePoint(name));
        if (place != model.end()) place->second = name;
        break;
      default:
        AddPoint(job, index, MakePoint(name));
        if (place == model.end() && firstOf(name) < 0) model[index] = name;
    }
    for (int k = 0; k < 5; ++k) {
      const std::string asked = nameOf(pick(500));
      wrong += job.Index(asked) == firstOf(asked) ? 0 : 1;
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(GetPointCount(job), model.size());
  for (const auto& [index, name] : model) EXPECT_EQ(job.NameAt(index), name);
}

}  // namespace
}  // namespace brenu::testing
