// The heights are propagated through a queue of what has changed; the definition of the result is
// full passes over all observations.  Both must agree to the last bit, which order of visit, pass
// limit and first-come rule decide: the differences in these networks contradict each other.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "level/level_net.h"
#include "support/job.h"
#include "support/random.h"

namespace brenu::testing {
namespace {

using Heights = std::map<std::string, double>;

// Full passes; nothing when a height cannot be reached.
std::optional<Heights> FullPasses(const std::vector<PointData>& points, std::size_t knownCount,
                                  const ObservationMap& observations) {
  Heights heights;
  const std::size_t unknownCount = points.size() - knownCount;
  for (std::size_t i = 0; i < points.size(); ++i) {
    heights[points[i].name] = i < knownCount ? points[i].h : -9999.9;
  }
  std::size_t determined = 0;
  for (std::size_t pass = 1;; ++pass) {
    for (const auto& [station, targets] : observations) {
      for (const auto& [target, obs] : targets) {
        double& from = heights[station];
        double& to = heights[target];
        if (from > -9999.0 && to < -9999.0) {
          to = from + obs.heightDiff;
          ++determined;
        } else if (from < -9999.0 && to > -9999.0) {
          from = to - obs.heightDiff;
          ++determined;
        }
      }
    }
    if (determined == unknownCount) return heights;
    if (pass > unknownCount) return std::nullopt;
  }
}

TEST(ApproximateHeights, AgreeWithFullPassesOverRandomNetworks) {
  Random random(20);
  int reached = 0;
  constexpr int kNetworks = 400;
  for (int network = 0; network < kNetworks; ++network) {
    const std::int32_t count = 5 + random.Below(26);
    const std::int32_t knownCount = 1 + random.Below(2);
    std::vector<PointData> points;
    for (std::int32_t i = 0; i < count; ++i) {
      // Names in no relation to the numbers.
      const std::string name = std::to_string(random.Below(1000)) + "/" + std::to_string(i);
      points.push_back(MakePoint(name, i < knownCount, 0, 0, random.Uniform(0, 100)));
    }
    ObservationMap observations;
    const auto lines = static_cast<std::int32_t>(count * random.Uniform(0.9, 1.8));
    for (std::int32_t k = 0; k < lines; ++k) {
      const auto from = static_cast<std::size_t>(random.Below(count));
      const auto to = static_cast<std::size_t>(random.Below(count));
      if (from == to) continue;
      observations[points[from].name][points[to].name] =
          Levelled(random.Uniform(100, 2000), random.Uniform(-9, 9));
    }

    const auto expected = FullPasses(points, static_cast<std::size_t>(knownCount), observations);
    LevelNet net;
    net.Fill(points, knownCount, observations, AdjParam{});
    ASSERT_EQ(net.CalcApproxHeight(), expected.has_value()) << "network " << network;
    for (const PointData& point : points) {
      const double h = net.Point(net.IndexOfPoint(point.name)).h;
      EXPECT_EQ(h, expected ? expected->at(point.name) : point.h) << "network " << network;
    }
    reached += expected ? 1 : 0;
  }
  // Both outcomes are well represented.
  EXPECT_GT(reached, kNetworks / 4);
  EXPECT_LT(reached, kNetworks * 3 / 4);
}

}  // namespace
}  // namespace brenu::testing
