// What holds for every network: properties of the adjustment on random ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/job.h"
#include "support/random.h"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

constexpr int kNetworks = 20;
constexpr double kDegree = 3.14159265358979323846 / 180;

// The packed notation of an angle in degrees, and back.
double Packed(double degrees) {
  const auto units = std::llround(degrees * 3600 * 10000);  // 0.0001"
  return static_cast<double>(units / 36000000) + static_cast<double>(units / 600000 % 60) / 100 +
         static_cast<double>(units % 600000) / 1e8;
}
double Degrees(double dms) {
  const auto units = std::llround(dms * 1e8);
  return static_cast<double>(units / 100000000) + static_cast<double>(units / 1000000 % 100) / 60 +
         static_cast<double>(units % 1000000) / 3600 / 1e4;
}

struct Line {
  int from, to;
  ObsData obs;
};

// A network as a list, so that it can be entered in other ways.  Points 0, 1 and 2 are control
// points on a disturbed grid; neighbours sight each other.
struct RandomNetwork {
  std::vector<std::string> names;
  std::vector<PointData> points;
  std::vector<Line> lines;

  explicit RandomNetwork(std::uint32_t seed) {
    Random random(seed);
    std::vector<PointData> truth;
    for (int i = 0; i < 8; ++i) {
      names.push_back(std::string(1, static_cast<char>('a' + i)) + std::to_string(seed));
      truth.push_back(MakePoint(names.back(), i < 3 ? 11 : 0, i / 3 * 400 + random.Uniform(20, 99),
                                i % 3 * 400 + random.Uniform(20, 99), random.Uniform(1, 50)));
      points.push_back(i < 3 ? truth.back() : MakePoint(names.back()));
    }
    for (int i = 0; i < 8; ++i) {
      const double orientation = random.Uniform(20, 60);
      for (int k = 0; k < 8; ++k) {
        const PointData& a = truth[static_cast<std::size_t>(i)];
        const PointData& b = truth[static_cast<std::size_t>(k)];
        const double s = std::hypot(b.x - a.x, b.y - a.y);
        if (i == k || s > 750) continue;
        const double azimuth = std::atan2(b.y - a.y, b.x - a.x) / kDegree;
        // Readings between 60 and 340 degrees, orientations between 20 and 60: no sum wraps.
        const double reading = std::fmod(azimuth - orientation + 720, 360);
        if (reading < 60 || reading > 340) continue;
        lines.push_back(
            {i,
             k,
             {s + random.Uniform(-0.004, 0.004), Packed(reading + random.Uniform(-2, 2) / 3600),
              b.h - a.h + random.Uniform(-0.001, 0.001), -1.0}});
      }
    }
  }

  void Enter(Job& job) const {
    SetAdjParam(job, Errors(2.5, 0.003, 2e-6));
    for (const PointData& point : points)
      job.Add(point.name, point.type, point.x, point.y, point.h);
    for (const Line& line : lines) {
      job.Observe(names[static_cast<std::size_t>(line.from)],
                  names[static_cast<std::size_t>(line.to)], line.obs);
    }
  }
};

struct Adjusted {
  PlaneResult plane;
  VerticalResult height;
};
using Results = std::map<std::string, Adjusted>;

Results Adjust(const Job& job) {
  Results results;
  EXPECT_TRUE(LeastSquareAdj(job));
  for (int i = 0; i < static_cast<int>(GetPointCount(job)); ++i) {
    const std::string name = job.NameAt(i);
    results[name] = {ReadPlane(job, name), ReadHeight(job, name)};
  }
  return results;
}
Results Adjust(const RandomNetwork& network) {
  Job job;
  network.Enter(job);
  return Adjust(job);
}

void ExpectSame(const Results& a, const Results& b, double tolerance, bool precision = true) {
  ASSERT_EQ(a.size(), b.size());
  for (const auto& [name, one] : a) {
    const Adjusted& other = b.at(name);
    EXPECT_NEAR(one.plane.x, other.plane.x, tolerance) << name;
    EXPECT_NEAR(one.plane.y, other.plane.y, tolerance) << name;
    EXPECT_NEAR(one.height.height, other.height.height, tolerance) << name;
    if (!precision) continue;
    EXPECT_NEAR(one.plane.mp, other.plane.mp, tolerance) << name;
    EXPECT_NEAR(one.height.sigma, other.height.sigma, tolerance) << name;
  }
}

void ForRandomNetworks(const std::function<void(RandomNetwork, Random&)>& check) {
  for (std::uint32_t seed = 1; seed <= kNetworks; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed + 1000);
    check(RandomNetwork(seed), random);
  }
}

TEST(Properties, TheOrderOfEntryDoesNotMatter) {
  ForRandomNetworks([](RandomNetwork network, Random& random) {
    const Results expected = Adjust(network);
    const auto shuffle = [&](auto& list) {
      for (int i = static_cast<int>(list.size()); i > 1; --i) {
        std::swap(list[static_cast<std::size_t>(i - 1)],
                  list[static_cast<std::size_t>(random.Below(i))]);
      }
    };
    shuffle(network.points);
    shuffle(network.lines);
    ExpectSame(Adjust(network), expected, 1e-8);
  });
}

TEST(Properties, AShiftOfTheOriginShiftsTheResults) {
  ForRandomNetworks([](RandomNetwork network, Random&) {
    constexpr double kX = 4'500'000;
    constexpr double kY = 500'000;
    constexpr double kH = 3000;
    Results expected = Adjust(network);
    for (auto& entry : expected) {
      entry.second.plane.x += kX;
      entry.second.plane.y += kY;
      entry.second.height.height += kH;
    }
    for (std::size_t i = 0; i < 3; ++i) {
      network.points[i].x += kX;
      network.points[i].y += kY;
      network.points[i].h += kH;
    }
    ExpectSame(Adjust(network), expected, 1e-6);
  });
}

TEST(Properties, ATurnedCircleChangesItsOrientationOnly) {
  ForRandomNetworks([](RandomNetwork network, Random& random) {
    const Results expected = Adjust(network);
    std::vector<double> turns;
    for (int i = 0; i < 8; ++i) turns.push_back(random.Uniform(-15, 15));
    for (Line& line : network.lines) {
      line.obs.direction =
          Packed(Degrees(line.obs.direction) + turns[static_cast<std::size_t>(line.from)]);
    }
    ExpectSame(Adjust(network), expected, 1e-6);
  });
}

TEST(Properties, NamesMatterByTheirOrderOnly) {
  ForRandomNetworks([](RandomNetwork network, Random&) {
    Job job;
    network.Enter(job);
    const Results expected = Adjust(job);
    Results renamed;
    for (int i = 7; i >= 0; --i) {
      const std::string name = network.names[static_cast<std::size_t>(i)] + " renamed";
      PointData point = network.points[static_cast<std::size_t>(i)];
      name.copy(point.name, sizeof point.name);
      EXPECT_EQ(SetPoint(job, i, point), i);
      renamed[name] = expected.at(network.names[static_cast<std::size_t>(i)]);
    }
    ExpectSame(Adjust(job), renamed, 0.0);
  });
}

TEST(Properties, AnObservationWithItsAdjustedValueChangesNothing) {
  ForRandomNetworks([](RandomNetwork network, Random&) {
    Job job;
    network.Enter(job);
    const Results expected = Adjust(job);
    // A distance and height difference that nobody observed, between the ends of the network.
    const auto& a = expected.at(network.names[0]);
    const auto& b = expected.at(network.names[7]);
    const double length = std::hypot(b.plane.x - a.plane.x, b.plane.y - a.plane.y);
    job.Observe(network.names[0], network.names[7],
                Levelled(length, b.height.height - a.height.height));
    ExpectSame(Adjust(job), expected, 2e-5, false);
  });
}

TEST(Properties, TheAdjustedNetworkCloses) {
  ForRandomNetworks([](RandomNetwork network, Random&) {
    Job job;
    network.Enter(job);
    ASSERT_TRUE(LeastSquareAdj(job));
    for (const Line& line : network.lines) {
      const std::string& from = network.names[static_cast<std::size_t>(line.from)];
      const std::string& to = network.names[static_cast<std::size_t>(line.to)];
      double d[4];
      ASSERT_TRUE(GetHeightObsResult(job, line.from, to.c_str(), d, d + 1, d + 2, d + 3));
      ObsData adjusted = line.obs;
      adjusted.heightDiff = d[1];
      ASSERT_EQ(SetObsData(job, job.Index(from), to.c_str(), adjusted), line.from);
    }
    ASSERT_TRUE(CalculateCloseError(job));
    ASSERT_GT(GetCloseErrorCount(job), 0);
    for (int i = 0; i < GetCloseErrorCount(job); ++i) {
      CloseError record{};
      GetCloseError(job, i, &record);
      EXPECT_NEAR(record.heightMisclosure, 0.0, 1e-9) << record.route;
    }
  });
}

// Angles are saved to 0.01", lengths and heights to a micrometre.
TEST(Properties, WhatIsSavedAndOpenedGivesTheSameResults) {
  ForRandomNetworks([](RandomNetwork network, Random&) {
    Job job;
    network.Enter(job);
    const Results expected = Adjust(job);
    const TempFile file;
    ASSERT_EQ(SaveBrenuAdjustFile(job, file.Path()), 1);
    const Job opened;
    ASSERT_TRUE(OpenBrenuAdjustFile(opened, file.Path()));
    ExpectSame(Adjust(opened), expected, 5e-5);
  });
}

}  // namespace
}  // namespace brenu::testing
