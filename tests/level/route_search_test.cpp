#include "level/route_search.h"

#include <gtest/gtest.h>

#include <limits>

#include "level/bridges.h"
#include "level/random_net.h"

namespace brenu::testing {
namespace {

constexpr std::int32_t kNone = RouteSearch::kNone;

void ExpectSameRoute(const RandomNet& net, const NetworkLayout& layout, const RouteSearch& search,
                     const PassRoutes& routes, std::int32_t point) {
  const std::int32_t slot = layout.SlotOf(point);
  ASSERT_EQ(search.IsReached(slot), routes.IsReached(point)) << net.Name(point);
  if (!routes.IsReached(point)) return;
  const auto i = static_cast<std::size_t>(point);
  EXPECT_EQ(search.Length(slot), routes.length[i]) << net.Name(point);
  EXPECT_EQ(search.HeightDiff(slot), routes.heightDiff[i]) << net.Name(point);
  EXPECT_EQ(layout.PointOf(search.Predecessor(slot)), routes.before[i]) << net.Name(point);
}

// The heap must decide every tie as the passes do.
TEST(RouteSearch, FindsTheRoutesOfThePasses) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    SCOPED_TRACE(seed);
    const RandomNet net(seed);
    const NetworkLayout layout = net.Layout();
    RouteSearch search(layout);
    ASSERT_TRUE(search.CanSearch());
    for (std::int32_t source = 0; source < layout.PointCount(); ++source) {
      // All routes, then all without one observation, another for every source.
      const auto lines = static_cast<std::int32_t>(net.lines.size());
      for (const std::int32_t excluded : {kNone, lines == 0 ? kNone : source % lines}) {
        const PassRoutes routes(net, source, excluded);
        search.Run(layout.SlotOf(source), excluded, kNone);
        for (std::int32_t i = 0; i < layout.PointCount(); ++i) {
          ExpectSameRoute(net, layout, search, routes, i);
        }
      }
    }
    if (HasFailure()) return;
  }
}

// Stopping early must not leave a tie undecided, neither at the target nor on the way to it.
TEST(RouteSearch, EarlyStopKeepsTheWholeRouteToTheTarget) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    SCOPED_TRACE(seed);
    const RandomNet net(seed);
    const NetworkLayout layout = net.Layout();
    RouteSearch search(layout);
    for (std::int32_t k = 0; k < static_cast<std::int32_t>(net.lines.size()); ++k) {
      const RandomNet::Line& line = net.lines[static_cast<std::size_t>(k)];
      const PassRoutes routes(net, line.target, k);
      search.Run(layout.SlotOf(line.target), k, layout.SlotOf(line.station));
      if (!routes.IsReached(line.station)) {
        EXPECT_FALSE(search.IsReached(layout.SlotOf(line.station)));
        continue;
      }
      for (const std::int32_t i : routes.Back(line.station)) {
        ExpectSameRoute(net, layout, search, routes, i);
      }
    }
    if (HasFailure()) return;
  }
}

TEST(RouteSearch, RefusesLengthsAndNamesWithoutShortestRoutes) {
  const std::vector<PointData> points = RandomNet(1).points;
  const std::string a = points[0].name;
  const std::string b = points[1].name;
  const auto canSearch = [&](const std::string& target, double length) {
    const ObservationMap observations = {{a, {{target, {length, -1.0, 1.0, -1.0}}}}};
    const NetworkLayout layout(points, 1, observations, IsLevelled);
    return RouteSearch(layout).CanSearch();
  };
  EXPECT_TRUE(canSearch(b, 100.0));
  EXPECT_FALSE(canSearch(b, -100.0));
  EXPECT_FALSE(canSearch(b, std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(canSearch(b, std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(canSearch("no point", 100.0));
}

TEST(Bridges, AreTheLinesWhoseEndsComeApartWithoutThem) {
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
    const RandomNet net(seed);
    const std::vector<char> bridges = FindBridges(net.Layout());
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
