#include "core/route_search.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "core/bridges.h"
#include "level/random_net.h"

namespace brenu::testing {
namespace {

constexpr std::int32_t kNone = RouteSearch::kNone;

// The lines between the numbers of the points.
RouteGraph GraphOf(const RandomNet& net) {
  std::vector<RouteLine> lines;
  for (const RandomNet::Line& line : net.lines) {
    lines.push_back({line.station, line.target, line.length, line.heightDiff});
  }
  return {static_cast<std::int32_t>(net.points.size()), std::move(lines)};
}

void ExpectSameRoute(const RandomNet& net, const RouteSearch& search, const PassRoutes& routes,
                     std::int32_t point) {
  ASSERT_EQ(search.IsReached(point), routes.IsReached(point)) << net.Name(point);
  if (!routes.IsReached(point)) return;
  const auto i = static_cast<std::size_t>(point);
  EXPECT_EQ(search.Length(point), routes.length[i]) << net.Name(point);
  EXPECT_EQ(search.Rise(point), routes.heightDiff[i]) << net.Name(point);
  EXPECT_EQ(search.Predecessor(point), routes.before[i]) << net.Name(point);
}

// The heap must decide every tie as the passes do.  Searches that stop at a target are those of
// loops, whose whole routes are compared in level_closures_test.
TEST(RouteSearch, FindsTheRoutesOfThePasses) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    SCOPED_TRACE(seed);
    const RandomNet net(seed);
    const RouteGraph graph = GraphOf(net);
    RouteSearch search(graph);
    for (std::int32_t source = 0; source < graph.NodeCount(); ++source) {
      // All routes, then all without one observation, another for every source.
      const auto lines = static_cast<std::int32_t>(net.lines.size());
      for (const std::int32_t excluded : {kNone, lines == 0 ? kNone : source % lines}) {
        const PassRoutes routes(net, source, excluded);
        search.Run(source, excluded, kNone);
        for (std::int32_t i = 0; i < graph.NodeCount(); ++i) {
          ExpectSameRoute(net, search, routes, i);
        }
      }
    }
    if (HasFailure()) return;
  }
}

TEST(Bridges, AreTheLinesWhoseEndsComeApartWithoutThem) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    const RandomNet net(seed);
    const std::vector<char> bridges = FindBridges(GraphOf(net));
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
