// The heights are propagated through a queue of what has changed; the definition of the result is
// full passes over all observations.  Both must agree to the last bit, which order of visit, pass
// limit and first-come rule decide: the differences in these networks contradict each other.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "level/level_adjustment.h"
#include "level/random_net.h"

namespace brenu::testing {
namespace {

using Heights = std::map<std::string, double>;

// Full passes; nothing when a height cannot be reached, or without any observation.
std::optional<Heights> FullPasses(const RandomNet& net) {
  if (net.lines.empty()) return std::nullopt;
  Heights heights;
  const std::size_t knownCount = static_cast<std::size_t>(net.controlCount);
  const std::size_t unknownCount = net.points.size() - knownCount;
  for (std::size_t i = 0; i < net.points.size(); ++i) {
    heights[net.points[i].name] = i < knownCount ? net.points[i].h : -9999.9;
  }
  std::size_t determined = 0;
  for (std::size_t pass = 1;; ++pass) {
    for (const RandomNet::Line& line : net.lines) {
      double& from = heights[net.Name(line.station)];
      double& to = heights[net.Name(line.target)];
      if (from > -9999.0 && to < -9999.0) {
        to = from + line.heightDiff;
        ++determined;
      } else if (from < -9999.0 && to > -9999.0) {
        from = to - line.heightDiff;
        ++determined;
      }
    }
    if (determined == unknownCount) return heights;
    if (pass > unknownCount) return std::nullopt;
  }
}

TEST(ApproximateHeights, AgreeWithFullPassesOverRandomNetworks) {
  std::uint32_t reached = 0;
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    SCOPED_TRACE(seed);
    const RandomNet data(seed);
    const auto expected = FullPasses(data);
    const auto level = std::make_shared<const LevelNet>(data.points, data.controlCount, data.observations, kDefaultParam);
    LevelAdjustment net(level);
    ASSERT_EQ(net.CalcApproxHeight().ok, expected.has_value());
    if (!expected) continue;
    for (const PointData& point : data.points) {
      const double h = net.ApproximateHeights()[level->layout.IndexOfPoint(point.name)];
      EXPECT_EQ(h, expected ? expected->at(point.name) : point.h);
    }
    reached += expected ? 1 : 0;
  }
  // Both outcomes are well represented.
  EXPECT_GT(reached, kRandomNets / 4);
  EXPECT_LT(reached, kRandomNets * 3 / 4);
}

}  // namespace
}  // namespace brenu::testing
