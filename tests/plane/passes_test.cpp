// Points are placed through a queue of stations for which something has changed; the definition of
// the result is full passes over all stations.  Both must agree to the last bit.  The readings are
// random and contradict each other, so that every other order of placing gives other coordinates.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/angles.h"
#include "plane/plane_adjustment.h"
#include "support/job.h"
#include "support/random.h"

namespace brenu::testing {
namespace {

struct Place0 {
  double x, y;
  bool placed;
};

// Full passes over all stations.
struct FullPasses {
  FullPasses(const std::vector<PointData>& points, std::size_t knownCount,
             const ObservationMap& observed)
      : observations(observed), remaining(points.size() - knownCount) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      positions[points[i].name] = {points[i].x, points[i].y, i < knownCount};
    }
  }

  bool Run() {
    for (const std::size_t most = remaining + 1; remaining > 0; ++passes) {
      if (passes == most) return false;
      for (const auto& [station, targets] : observations) {
        if (!positions.at(station).placed) continue;
        for (const auto& [reference, obs] : targets) Orient(station, targets, reference, obs);
      }
    }
    return true;
  }

  const ObsData* Find(const std::string& station, const std::string& target) const {
    const auto targets = observations.find(station);
    if (targets == observations.end()) return nullptr;
    const auto obs = targets->second.find(target);
    return obs == targets->second.end() ? nullptr : &obs->second;
  }

  void Orient(const std::string& station, const TargetMap& targets, const std::string& reference,
              const ObsData& obs) {
    const Place0& s = positions.at(station);
    const Place0& r = positions.at(reference);
    const ObsData* back = Find(reference, station);
    double azimuth = 0;
    if (obs.azimuth != -1.0) {
      azimuth = DmsToRad(obs.azimuth);
    } else if (back != nullptr && back->azimuth != -1.0) {
      azimuth = DmsToRad(back->azimuth + 180.0);
    } else if (r.placed) {
      azimuth = CalcAzimuth(s.x, s.y, r.x, r.y);
    } else {
      return;
    }
    if (obs.direction == -1.0) return;
    for (const auto& [target, sight] : targets) {
      if (positions.at(target).placed || sight.direction == -1.0) continue;
      const double a = DmsToRad(sight.direction) + azimuth - DmsToRad(obs.direction);
      const ObsData* reverse = Find(target, station);
      double distance = sight.distance;
      if (distance == 0.0 && reverse != nullptr) distance = reverse->distance;
      if (distance != 0.0) {
        Place(target, s.x + distance * std::cos(a), s.y + distance * std::sin(a));
        continue;
      }
      const ObsData* ray = Find(reference, target);
      if (!r.placed || back == nullptr || ray == nullptr) continue;
      if (back->direction == -1.0 || ray->direction == -1.0) continue;
      const double b = azimuth + kPi + DmsToRad(ray->direction) - DmsToRad(back->direction);
      const double t1 = std::tan(a);
      const double t2 = std::tan(b);
      if (!(std::fabs(t1) - std::fabs(t2) >= 1e-7)) continue;
      const double c1 = t1 * s.x - s.y;
      const double c2 = r.y - t2 * r.x;
      Place(target, (c1 + c2) / (t1 - t2), (c2 * t1 + c1 * t2) / (t1 - t2));
      ++intersections;
    }
  }

  void Place(const std::string& name, double x, double y) {
    positions[name] = {x, y, true};
    --remaining;
  }

  const ObservationMap& observations;
  std::map<std::string, Place0> positions;
  std::size_t remaining;  // points not yet placed
  std::size_t passes = 0;
  int intersections = 0;
};

TEST(ApproximateCoordinates, AgreeWithFullPassesOverRandomNetworks) {
  Random random(21);
  int reached = 0;
  int manyPasses = 0;
  int intersections = 0;
  constexpr int kNetworks = 600;
  for (int network = 0; network < kNetworks; ++network) {
    const std::int32_t count = 5 + random.Below(26);
    const std::int32_t knownCount = 1 + random.Below(3);
    std::vector<PointData> points;
    for (std::int32_t i = 0; i < count; ++i) {
      // Names in no relation to the numbers.
      const std::string name = std::to_string(random.Below(1000)) + "/" + std::to_string(i);
      points.push_back(MakePoint(name, i < knownCount ? 10 : 0, random.Uniform(0, 1000),
                                 random.Uniform(0, 1000)));
    }
    ObservationMap observations;
    const auto lines = static_cast<std::int32_t>(count * random.Uniform(1.5, 4.0));
    const double distances = random.Uniform(0.2, 0.8);
    for (std::int32_t k = 0; k < lines; ++k) {
      const std::string a = points[static_cast<std::size_t>(random.Below(count))].name;
      const std::string b = points[static_cast<std::size_t>(random.Below(count))].name;
      if (a == b) continue;
      for (const bool forward : {true, false}) {
        if (!forward && random.Chance(0.3)) continue;
        ObsData obs = Direction(random.Chance(0.1) ? -1.0 : random.Below(360));
        if (random.Chance(distances)) obs.distance = random.Uniform(100, 500);
        if (random.Chance(0.05)) obs.azimuth = random.Below(360);
        observations[forward ? a : b][forward ? b : a] = obs;
      }
    }

    FullPasses expected(points, static_cast<std::size_t>(knownCount), observations);
    const bool success = expected.Run();
    const auto plane = std::make_shared<const PlaneNet>(points, knownCount, observations, AdjParam{});
    PlaneAdjustment net(plane);
    ASSERT_EQ(net.CalcApproxCoordinates().ok, success) << "network " << network;
    if (!success) continue;
    for (std::int32_t i = 0; i < count; ++i) {
      const PointData& given = points[static_cast<std::size_t>(i)];
      const auto& point = net.ApproximateCoordinates()[PointNo(i)];
      // A failed run leaves the coordinates of all points as they were.
      EXPECT_EQ(point.x, success ? expected.positions.at(given.name).x : given.x)
          << "network " << network;
      EXPECT_EQ(point.y, success ? expected.positions.at(given.name).y : given.y)
          << "network " << network;
    }
    reached += success ? 1 : 0;
    manyPasses += success && expected.passes > 2 ? 1 : 0;
    intersections += expected.intersections;
  }
  // What the comparison is about does happen.
  EXPECT_GT(reached, kNetworks / 6);
  EXPECT_LT(reached, kNetworks * 3 / 4);
  EXPECT_GT(manyPasses, 20);
  EXPECT_GT(intersections, 100);
}

}  // namespace
}  // namespace brenu::testing
