// Closures and bridges of small random levelling networks, against routes found the slow way.
#include "level/level_closures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/bridges.h"
#include "support/job.h"

namespace brenu::testing {
namespace {

// From scattered parts over trees to dense networks, in which many pairs are observed twice.  All
// numbers are whole or halves, so that sums are exact in any order and routes of equal length are
// common.
LevelNet MakeRandomNet(std::uint32_t seed) {
  std::mt19937 random(seed);
  const auto below = [&random](std::int32_t limit) {
    return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(limit));
  };
  const std::int32_t count = 2 + below(11);
  std::vector<PointData> points;
  for (std::int32_t i = 0; i < count; ++i) {
    // 10 comes before 2: the numbers of the points are not the order of their names.
    points.push_back(MakePoint(std::to_string((i + 7) % count), 0, 0.0, 0.0, below(40) / 2.0));
  }
  const std::int32_t controlCount = 1 + below(count);
  ObservationMap observations;
  for (std::int32_t tries = below(3 * count); tries >= 0; --tries) {
    const std::string from = std::to_string(below(count));
    const std::string to = std::to_string(below(count));
    if (from != to) observations[from][to] = Levelled(100 + 100 * below(3), below(40) / 2.0 + 0.5);
  }
  return {points, controlCount, observations, kDefaultParam};
}

constexpr std::uint32_t kRandomNets = 400;

// How a point is reached: from the point before it, with the sums along the route.
struct Reached {
  Slot before;
  double length, rise;
};
using PassRoutes = std::map<Slot, Reached>;

// Passes over all lines but one until nothing changes; only strictly shorter routes replace others.
PassRoutes FindRoutes(const NetworkLayout& net, Slot source, SightNo excluded = SightNo()) {
  PassRoutes routes{{source, {source, 0.0, 0.0}}};
  const auto extend = [&](Slot from, Slot to, double length, double rise) {
    const auto start = routes.find(from);
    if (start == routes.end()) return false;
    const Reached next{from, start->second.length + length, start->second.rise + rise};
    const auto end = routes.find(to);
    if (end != routes.end() && end->second.length <= next.length) return false;
    routes[to] = next;
    return true;
  };
  for (bool changed = true; changed;) {
    changed = false;
    for (const SightNo k : net.Sights().Indices()) {
      const auto& [station, target, obs] = net.At(k);
      if (k == excluded) continue;
      changed |= extend(station, target, obs.distance, obs.heightDiff) ||
                 extend(target, station, obs.distance, -obs.heightDiff);
    }
  }
  return routes;
}

// The points from `start` back to the source.
std::vector<Slot> Back(const PassRoutes& routes, Slot start) {
  std::vector<Slot> route{start};
  while (routes.at(route.back()).before != route.back()) {
    route.push_back(routes.at(route.back()).before);
  }
  return route;
}

struct Closure {
  std::vector<Slot> route;
  double misclosure, length;  // mm, metres
};

std::vector<Closure> LinesByRules(const LevelNet& net) {
  std::vector<Closure> closures;
  for (const PointNo s : net.layout.ControlPoints()) {
    const PassRoutes routes = FindRoutes(net.layout, net.layout.SlotOf(s));
    for (const PointNo t : net.layout.ControlPoints()) {
      const Slot end = net.layout.SlotOf(t);
      if (t <= s || !routes.contains(end)) continue;
      const auto& [before, length, rise] = routes.at(end);
      const double known = net.points[t].h - net.points[s].h;
      const std::vector<Slot> route = Back(routes, end);
      // One observation is no line.
      if (route.size() > 2) closures.push_back({route, (known - rise) * 1000.0, length});
    }
  }
  return closures;
}

std::vector<Closure> LoopsByRules(const NetworkLayout& net) {
  std::vector<Closure> closures;
  std::set<SightNo> marked;
  for (const SightNo k : net.Sights().Indices()) {
    const auto& [station, target, obs] = net.At(k);
    if (marked.contains(k)) continue;
    const PassRoutes routes = FindRoutes(net, target, k);
    if (!routes.contains(station)) continue;
    marked.insert(k);
    std::vector<Slot> route = Back(routes, station);
    for (std::size_t i = 1; i < route.size(); ++i) {
      // The first line in walk order that joins the two points, in whichever direction.
      const SightNo there = net.FindSight(route[i - 1], route[i]);
      const SightNo back = net.FindSight(route[i], route[i - 1]);
      marked.insert(there.IsNone() || (!back.IsNone() && back < there) ? back : there);
    }
    if (route.size() < 3) continue;  // observed there and back: no loop
    route.push_back(station);
    const Reached& end = routes.at(station);
    closures.push_back({route, -(end.rise + obs.heightDiff) * 1000.0, end.length + obs.distance});
  }
  return closures;
}

void ExpectSame(const NetworkLayout& net, const std::vector<CloseError>& records,
                const std::vector<Closure>& closures) {
  ASSERT_EQ(records.size(), closures.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::string text;
    for (const Slot slot : closures[i].route) {
      text += (text.empty() ? "" : " - ") + net.Names().NameAt(slot);
    }
    EXPECT_EQ(records[i].route, text);
    EXPECT_EQ(records[i].heightMisclosure, closures[i].misclosure) << text;
    EXPECT_EQ(records[i].routeLength, closures[i].length) << text;
    EXPECT_DOUBLE_EQ(records[i].heightLimit, 20.0 * std::sqrt(closures[i].length / 1000.0));
  }
}

// The searches must decide every tie as the passes do, those of loops also when they stop early.
TEST(LevelClosures, AreThoseOfTheRules) {
  std::size_t lineCount = 0;
  std::size_t loopCount = 0;
  for (std::uint32_t seed = 0; seed < kRandomNets && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    const LevelNet net = MakeRandomNet(seed);
    Table<Slot, double> heights;
    heights.Assign(net.points.Size(), 0.0);
    for (const PointNo i : net.layout.Points()) heights[net.layout.SlotOf(i)] = net.points[i].h;

    std::vector<CloseError> lines, loops;
    EXPECT_EQ(CalcLineCloseError(net, heights, lines), net.layout.ControlCount() >= 2);
    ExpectSame(net.layout, lines, LinesByRules(net));
    const bool hasLoops = net.layout.Sights().Size() >= net.points.Size();
    EXPECT_EQ(CalcLoopCloseError(net, loops), hasLoops);
    if (hasLoops) ExpectSame(net.layout, loops, LoopsByRules(net.layout));
    lineCount += lines.size();
    loopCount += loops.size();
  }
  // Networks without any would prove nothing.
  EXPECT_GT(lineCount, 1000u);
  EXPECT_GT(loopCount, 500u);
}

TEST(Bridges, AreTheLinesWhoseEndsComeApartWithoutThem) {
  for (std::uint32_t seed = 0; seed < kRandomNets && !HasFailure(); ++seed) {
    const LevelNet net = MakeRandomNet(seed);
    std::vector<RouteLine> lines;
    for (const Sight& s : net.layout.Sights()) lines.push_back({s.station, s.target, 1.0, 0.0});
    const auto bridges = FindBridges(RouteGraph(net.layout.Names().Count(), std::move(lines)));
    ASSERT_EQ(bridges.Size(), net.layout.Sights().Size());
    for (const SightNo k : net.layout.Sights().Indices()) {
      const Sight& s = net.layout.At(k);
      const bool isBridge = !FindRoutes(net.layout, s.station, k).contains(s.target);
      EXPECT_EQ(bridges[LineNo(k.Number())] != 0, isBridge) << seed << ", " << k.Number();
    }
  }
}

}  // namespace
}  // namespace brenu::testing
