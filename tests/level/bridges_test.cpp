#include "core/bridges.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "level/random_net.h"

namespace brenu::testing {
namespace {

TEST(Bridges, AreTheLinesWhoseEndsComeApartWithoutThem) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    const RandomNet net(seed);
    std::vector<RouteLine> lines;
    for (const RandomNet::Line& line : net.lines) {
      lines.push_back({line.station, line.target, line.length, line.heightDiff});
    }
    const RouteGraph graph(static_cast<std::int32_t>(net.points.size()), std::move(lines));
    const std::vector<char> bridges = FindBridges(graph);
    ASSERT_EQ(bridges.size(), net.lines.size());
    for (std::size_t k = 0; k < bridges.size(); ++k) {
      const RandomNet::Line& line = net.lines[k];
      const PassRoutes without(net, line.station, static_cast<std::int32_t>(k));
      EXPECT_EQ(bridges[k] != 0, !without.IsReached(line.target)) << seed << ", line " << k;
    }
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace brenu::testing
