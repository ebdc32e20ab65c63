#include <gtest/gtest.h>

#include <cmath>

#include "level/level_closures.h"
#include "level/random_net.h"

namespace brenu::testing {
namespace {

// What the rules give, without any shortcut.
struct Closure {
  std::string route;
  double misclosure, length;  // mm, metres
};

std::string Text(const RandomNet& net, const std::vector<std::int32_t>& route) {
  std::string text;
  for (const std::int32_t point : route) text += (text.empty() ? "" : " - ") + net.Name(point);
  return text;
}

std::vector<Closure> LinesByRules(const RandomNet& net) {
  std::vector<Closure> closures;
  for (std::int32_t s = 0; s < net.controlCount; ++s) {
    const PassRoutes routes(net, s, -1);
    for (std::int32_t t = s + 1; t < net.controlCount; ++t) {
      if (!routes.IsReached(t)) continue;
      const std::vector<std::int32_t> route = routes.Back(t);
      if (route.size() < 3) continue;  // one observation is no line
      const auto i = static_cast<std::size_t>(t);
      const double known = net.points[i].h - net.points[static_cast<std::size_t>(s)].h;
      closures.push_back(
          {Text(net, route), (known - routes.heightDiff[i]) * 1000.0, routes.length[i]});
    }
  }
  return closures;
}

// The first line in walk order that joins the two points, in whichever direction.
std::size_t FirstLineBetween(const RandomNet& net, std::int32_t a, std::int32_t b) {
  std::size_t k = 0;
  while (!(net.lines[k].station == a && net.lines[k].target == b) &&
         !(net.lines[k].station == b && net.lines[k].target == a)) {
    ++k;
  }
  return k;
}

std::vector<Closure> LoopsByRules(const RandomNet& net) {
  std::vector<Closure> closures;
  if (net.lines.size() < net.points.size()) return closures;
  std::vector<bool> marked(net.lines.size());
  for (std::size_t k = 0; k < net.lines.size(); ++k) {
    if (marked[k]) continue;
    const RandomNet::Line& line = net.lines[k];
    const PassRoutes routes(net, line.target, static_cast<std::int32_t>(k));
    if (!routes.IsReached(line.station)) continue;
    marked[k] = true;
    std::vector<std::int32_t> route = routes.Back(line.station);
    for (std::size_t i = 1; i < route.size(); ++i) {
      marked[FirstLineBetween(net, route[i - 1], route[i])] = true;
    }
    if (route.size() < 3) continue;  // observed there and back: no loop
    route.push_back(line.station);
    const auto s = static_cast<std::size_t>(line.station);
    closures.push_back({Text(net, route), -(routes.heightDiff[s] + line.heightDiff) * 1000.0,
                        routes.length[s] + line.length});
  }
  return closures;
}

void ExpectSame(const std::vector<CloseError>& records, const std::vector<Closure>& closures) {
  ASSERT_EQ(records.size(), closures.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(records[i].route, closures[i].route);
    EXPECT_EQ(records[i].heightMisclosure, closures[i].misclosure) << closures[i].route;
    EXPECT_EQ(records[i].routeLength, closures[i].length) << closures[i].route;
    EXPECT_DOUBLE_EQ(records[i].heightLimit, 20.0 * std::sqrt(closures[i].length / 1000.0));
  }
}

// The searches must decide every tie as the passes do, those of loops also when they stop early.
TEST(LevelClosures, AreThoseOfTheRules) {
  std::size_t lineCount = 0;
  std::size_t loopCount = 0;
  for (std::uint32_t seed = 0; seed < kRandomNets; ++seed) {
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

    if (HasFailure()) return;
    lineCount += lines.size();
    loopCount += loops.size();
  }
  // Networks without any would prove nothing.
  EXPECT_GT(lineCount, 1000u);
  EXPECT_GT(loopCount, 500u);
}

}  // namespace
}  // namespace brenu::testing
