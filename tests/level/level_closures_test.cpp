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

// All numbers are whole or halves, so that sums are exact in any order and routes of equal length
// are common.
struct RandomNet {
  struct Line {
    std::string station, target;
    double length, rise;
  };
  std::vector<PointData> points;  // the first controlCount are bench marks
  std::int32_t controlCount;
  ObservationMap observations;
  std::vector<Line> lines;  // in walk order

  // From scattered parts over trees to dense networks, in which many pairs are observed twice.
  explicit RandomNet(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t limit) {
      return static_cast<std::int32_t>(random() % limit);
    };
    // 10 comes before 2: the numbers of the points are not the order of their names.
    const std::int32_t count = 2 + below(11);
    for (std::int32_t i = 0; i < count; ++i) {
      points.push_back(MakePoint(std::to_string((i + 7) % count), 0, 0.0, 0.0, below(40) / 2.0));
    }
    controlCount = 1 + below(points.size());
    for (std::int32_t tries = below(3 * points.size()); tries >= 0; --tries) {
      const std::string from = std::to_string(below(points.size()));
      const std::string to = std::to_string(below(points.size()));
      if (from != to)
        observations[from][to] = Levelled(100 + 100 * below(3), below(40) / 2.0 + 0.5);
    }
    for (const auto& [station, targets] : observations) {
      for (const auto& [target, o] : targets) {
        lines.push_back({station, target, o.distance, o.heightDiff});
      }
    }
  }
};

constexpr std::uint32_t kRandomNets = 400;

// How a point is reached: from the point before it, with the sums along the route.
struct Reached {
  std::string before;
  double length, rise;
};
using PassRoutes = std::map<std::string, Reached>;

// Passes over all lines but one until nothing changes; only strictly shorter routes replace others.
PassRoutes FindRoutes(const RandomNet& net, const std::string& source,
                      const RandomNet::Line* excluded = nullptr) {
  PassRoutes routes{{source, {source, 0.0, 0.0}}};
  bool changed = true;
  const auto extend = [&](const std::string& from, const std::string& to, double length,
                          double rise) {
    const auto start = routes.find(from);
    if (start == routes.end()) return false;
    const Reached next{from, start->second.length + length, start->second.rise + rise};
    const auto end = routes.find(to);
    if (end != routes.end() && end->second.length <= next.length) return false;
    routes[to] = next;
    return true;
  };
  while (changed) {
    changed = false;
    for (const RandomNet::Line& l : net.lines) {
      if (&l == excluded) continue;
      changed |= extend(l.station, l.target, l.length, l.rise) ||
                 extend(l.target, l.station, l.length, -l.rise);
    }
  }
  return routes;
}

// The points from `start` back to the source.
Strings Back(const PassRoutes& routes, const std::string& start) {
  Strings route{start};
  while (routes.at(route.back()).before != route.back()) {
    route.push_back(routes.at(route.back()).before);
  }
  return route;
}

struct Closure {
  Strings route;
  double misclosure, length;  // mm, metres
};

std::vector<Closure> LinesByRules(const RandomNet& net) {
  std::vector<Closure> closures;
  const std::vector<PointData> marks(net.points.begin(), net.points.begin() + net.controlCount);
  for (auto s = marks.begin(); s != marks.end(); ++s) {
    const PassRoutes routes = FindRoutes(net, s->name);
    for (auto t = s + 1; t != marks.end(); ++t) {
      if (!routes.contains(t->name)) continue;
      const Strings route = Back(routes, t->name);
      if (route.size() < 3) continue;  // one observation is no line
      const Reached& end = routes.at(t->name);
      closures.push_back({route, (t->h - s->h - end.rise) * 1000.0, end.length});
    }
  }
  return closures;
}

std::vector<Closure> LoopsByRules(const RandomNet& net) {
  std::vector<Closure> closures;
  std::set<const RandomNet::Line*> marked;
  if (net.lines.size() < net.points.size()) return closures;
  for (const RandomNet::Line& line : net.lines) {
    if (marked.contains(&line)) continue;
    const PassRoutes routes = FindRoutes(net, line.target, &line);
    if (!routes.contains(line.station)) continue;
    Strings route = Back(routes, line.station);
    for (std::size_t i = 1; i < route.size(); ++i) {
      // The first line in walk order that joins the two points, in whichever direction.
      const auto joins = [&](const RandomNet::Line& l) {
        return (l.station == route[i - 1] && l.target == route[i]) ||
               (l.station == route[i] && l.target == route[i - 1]);
      };
      marked.insert(&*std::find_if(net.lines.begin(), net.lines.end(), joins));
    }
    marked.insert(&line);
    if (route.size() < 3) continue;  // observed there and back: no loop
    route.push_back(line.station);
    const Reached& end = routes.at(line.station);
    closures.push_back({route, -(end.rise + line.rise) * 1000.0, end.length + line.length});
  }
  return closures;
}

void ExpectSame(const std::vector<CloseError>& records, const std::vector<Closure>& closures) {
  ASSERT_EQ(records.size(), closures.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::string text;
    for (const std::string& name : closures[i].route) text += (text.empty() ? "" : " - ") + name;
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
    const RandomNet data(seed);
    const LevelNet net(data.points, data.controlCount, data.observations, kDefaultParam);
    Table<Slot, double> heights;
    heights.Assign(data.points.size(), 0.0);
    for (const PointNo i : net.layout.Points()) heights[net.layout.SlotOf(i)] = net.points[i].h;

    std::vector<CloseError> lines;
    EXPECT_EQ(CalcLineCloseError(net, heights, lines), data.controlCount >= 2);
    ExpectSame(lines, LinesByRules(data));
    std::vector<CloseError> loops;
    EXPECT_EQ(CalcLoopCloseError(net, loops), data.lines.size() >= data.points.size());
    ExpectSame(loops, LoopsByRules(data));
    lineCount += lines.size();
    loopCount += loops.size();
  }
  // Networks without any would prove nothing.
  EXPECT_GT(lineCount, 1000u);
  EXPECT_GT(loopCount, 500u);
}

TEST(Bridges, AreTheLinesWhoseEndsComeApartWithoutThem) {
  for (std::uint32_t seed = 0; seed < kRandomNets && !HasFailure(); ++seed) {
    const RandomNet data(seed);
    const LevelNet net(data.points, data.controlCount, data.observations, kDefaultParam);
    std::vector<RouteLine> lines;
    for (const Sight& s : net.layout.Sights()) lines.push_back({s.station, s.target, 1.0, 0.0});
    const auto bridges = FindBridges(RouteGraph(net.layout.Names().Count(), std::move(lines)));
    ASSERT_EQ(bridges.Size(), data.lines.size());
    for (const LineNo k : bridges.Indices()) {
      const RandomNet::Line& line = data.lines[k.Position()];
      const bool isBridge = !FindRoutes(data, line.station, &line).contains(line.target);
      EXPECT_EQ(bridges[k] != 0, isBridge) << seed << ", " << k.Number();
    }
  }
}

}  // namespace
}  // namespace brenu::testing
