// What holds for every network: properties of the adjustment on random ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/job.h"
#include "support/random.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

// The packed notation of an angle in degrees.
double Packed(double degrees) {
  const auto units = std::llround(degrees * 3600 * 10000);  // 0.0001"
  return static_cast<double>(units / 36000000) + static_cast<double>(units / 600000 % 60) / 100 +
         static_cast<double>(units % 600000) / 1e8;
}

// A network as a list, so that it can be entered in other ways.  The first three points are control
// points on a disturbed grid; neighbours sight each other.
struct RandomNetwork {
  std::vector<Job::NewPoint> points;
  std::vector<Job::NewObs> lines;

  explicit RandomNetwork(std::uint32_t seed) {
    Random random(seed);
    std::vector<Job::NewPoint> truth;
    for (int i = 0; i < 8; ++i) {
      const std::string name = static_cast<char>('a' + i) + std::to_string(seed);
      truth.push_back({name, i < 3 ? 11 : 0, i / 3 * 400 + random.Uniform(20, 99),
                       i % 3 * 400 + random.Uniform(20, 99), random.Uniform(1, 50)});
      points.push_back(i < 3 ? truth.back() : Job::NewPoint{name});
    }
    for (const Job::NewPoint& a : truth) {
      const double orientation = random.Uniform(20, 60);
      for (const Job::NewPoint& b : truth) {
        const double s = std::hypot(b.x - a.x, b.y - a.y);
        const double azimuth = std::atan2(b.y - a.y, b.x - a.x) / kDegree;
        const double reading = std::fmod(azimuth - orientation + 720, 360);
        // Readings between 60 and 340 degrees, orientations between 20 and 60: no sum wraps.
        if (&a == &b || s > 750 || reading < 60 || reading > 340) continue;
        lines.push_back(
            {a.name,
             b.name,
             {s + random.Uniform(-0.004, 0.004), Packed(reading + random.Uniform(-2, 2) / 3600),
              b.h - a.h + random.Uniform(-0.001, 0.001), -1.0}});
      }
    }
  }
};

// By name: X, Y, H and the standard errors of position and height.
using Results = std::map<std::string, std::vector<double>>;

Results Adjust(const Job& job) {
  EXPECT_TRUE(LeastSquareAdj(job));
  Results results;
  for (int i = 0; i < static_cast<int>(GetPointCount(job)); ++i) {
    const std::string name = job.NameAt(i);
    const PlaneResult plane = ReadPlane(job, name);
    const VerticalResult height = ReadHeight(job, name);
    results[name] = {plane.x, plane.y, height.height, plane.mp, height.sigma};
  }
  return results;
}

void ExpectSame(const Results& actual, const Results& expected, double tolerance) {
  ASSERT_EQ(actual.size(), expected.size());
  for (const auto& [name, numbers] : actual) {
    EXPECT_TRUE(Near(numbers, expected.at(name), tolerance)) << name;
  }
}

// A random network that has been entered and adjusted.
struct Trial {
  std::mt19937 random;
  RandomNetwork network;
  Job job = Job();
  Results expected = {};
};

Results EnterAndAdjust(const RandomNetwork& network, Job& job) {
  SetAdjParam(job, Errors(2.5, 0.003, 2e-6));
  job.AddPoints(network.points);
  job.ObserveAll(network.lines);
  return Adjust(job);
}

// That the network, entered anew as it is now, has these results.
void ExpectResults(const RandomNetwork& network, const Results& expected, double tolerance) {
  Job job;
  ExpectSame(EnterAndAdjust(network, job), expected, tolerance);
}

void ForRandomNetworks(void (*check)(Trial&)) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Trial trial{std::mt19937(seed), RandomNetwork(seed)};
    trial.expected = EnterAndAdjust(trial.network, trial.job);
    check(trial);
  }
}

TEST(Properties, TheOrderOfEntryDoesNotMatter) {
  ForRandomNetworks([](Trial& t) {
    std::shuffle(t.network.points.begin(), t.network.points.end(), t.random);
    std::shuffle(t.network.lines.begin(), t.network.lines.end(), t.random);
    ExpectResults(t.network, t.expected, 1e-8);
  });
}

TEST(Properties, AShiftOfTheOriginShiftsTheResults) {
  ForRandomNetworks([](Trial& t) {
    constexpr double kShift[] = {4'500'000, 500'000, 3000};
    for (auto& entry : t.expected) {
      for (std::size_t i = 0; i < 3; ++i) entry.second[i] += kShift[i];
    }
    for (std::size_t i = 0; i < 3; ++i) {
      Job::NewPoint& control = t.network.points[i];
      control.x += kShift[0];
      control.y += kShift[1];
      control.h += kShift[2];
    }
    ExpectResults(t.network, t.expected, 1e-6);
  });
}

TEST(Properties, ATurnedCircleChangesItsOrientationOnly) {
  ForRandomNetworks([](Trial& t) {
    std::map<std::string, double> turns;  // whole degrees
    for (const Job::NewPoint& p : t.network.points)
      turns[p.name] = static_cast<int>(t.random() % 31) - 15;
    for (Job::NewObs& line : t.network.lines) line.obs.direction += turns[line.station];
    ExpectResults(t.network, t.expected, 1e-6);
  });
}

TEST(Properties, NamesMatterByTheirOrderOnly) {
  ForRandomNetworks([](Trial& t) {
    Results renamed;
    for (int i = 7; i >= 0; --i) {
      const Job::NewPoint& p = t.network.points[static_cast<std::size_t>(i)];
      const std::string name = p.name + " renamed";
      EXPECT_EQ(SetPoint(t.job, i, MakePoint(name, p.type, p.x, p.y, p.h)), i);
      renamed[name] = t.expected.at(p.name);
    }
    ExpectSame(Adjust(t.job), renamed, 0.0);
  });
}

// A distance and a height difference that nobody observed, between the ends of the network.
TEST(Properties, AnObservationWithItsAdjustedValueChangesNothing) {
  ForRandomNetworks([](Trial& t) {
    const std::string from = t.network.points.front().name;
    const std::string to = t.network.points.back().name;
    const std::vector<double>& a = t.expected[from];
    const std::vector<double>& b = t.expected[to];
    t.job.Observe(from, to, Levelled(std::hypot(b[0] - a[0], b[1] - a[1]), b[2] - a[2]));
    Results actual = Adjust(t.job);
    for (Results* results : {&actual, &t.expected}) {
      for (auto& entry : *results) entry.second.resize(3);  // standard errors do change
    }
    ExpectSame(actual, t.expected, 2e-5);
  });
}

TEST(Properties, TheAdjustedNetworkCloses) {
  ForRandomNetworks([](Trial& t) {
    std::vector<ObsData> adjusted;
    for (const Job::NewObs& line : t.network.lines) {
      adjusted.push_back(line.obs);
      adjusted.back().heightDiff = ReadHeightObs(t.job, line.station, line.target.c_str()).adjusted;
    }
    for (std::size_t i = 0; i < adjusted.size(); ++i) {
      const Job::NewObs& line = t.network.lines[i];
      SetObsData(t.job, t.job.Index(line.station), line.target.c_str(), adjusted[i]);
    }
    const std::vector<CloseError> closures = Closures(t.job);
    ASSERT_FALSE(closures.empty());
    for (const CloseError& c : closures) EXPECT_NEAR(c.heightMisclosure, 0.0, 1e-9) << c.route;
  });
}

// Angles are saved to 0.01", lengths and heights to a micrometre.
TEST(Properties, WhatIsSavedAndOpenedGivesTheSameResults) {
  ForRandomNetworks([](Trial& t) {
    const TempFile file;
    ASSERT_EQ(SaveBrenuAdjustFile(t.job, file.Path()), 1);
    const Job opened;
    ASSERT_TRUE(OpenBrenuAdjustFile(opened, file.Path()));
    ExpectSame(Adjust(opened), t.expected, 5e-5);
  });
}

}  // namespace
}  // namespace brenu::testing
