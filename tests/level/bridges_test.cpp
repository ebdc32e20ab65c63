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
      lines.push_back({Slot(line.station), Slot(line.target), line.length, line.heightDiff});
    }
    const RouteGraph graph(static_cast<std::int32_t>(net.points.size()), std::move(lines));
    const Table<LineNo, char> bridges = FindBridges(graph);
    ASSERT_EQ(bridges.Size(), net.lines.size());
    for (const LineNo k : bridges.Indices()) {
      const RandomNet::Line& line = net.lines[k.Position()];
      const PassRoutes without(net, line.station, k.Number());
      EXPECT_EQ(bridges[k] != 0, !without.IsReached(line.target)) << seed << ", " << k.Number();
    }
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace brenu::testing
