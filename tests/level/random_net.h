// Small random levelling networks, and the routes in them found the slow way.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/records.h"
#include "support/job.h"

namespace brenu::testing {

// A network by point numbers, beside the form in which the library takes it.  All numbers are whole
// or halves, so that sums are exact in any order and routes of equal length are common.
struct RandomNet {
  struct Line {
    std::int32_t station, target;
    double length, heightDiff;
  };
  std::vector<PointData> points;  // the first controlCount are bench marks
  std::int32_t controlCount;
  ObservationMap observations;
  std::vector<Line> lines;  // in walk order

  explicit RandomNet(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&random](std::uint32_t limit) {
      return static_cast<std::int32_t>(random() % limit);
    };
    // 10 comes before 2: the numbers of the points are not the order of their names.
    const std::int32_t count = 2 + below(11);
    for (std::int32_t i = 0; i < count; ++i) {
      points.push_back(MakePoint(std::to_string((i + 7) % count), 0, 0.0, 0.0, below(40) / 2.0));
    }
    controlCount = 1 + below(static_cast<std::uint32_t>(count));
    // From scattered parts over trees to dense networks, in which many pairs are observed twice.
    for (std::int32_t tries = below(static_cast<std::uint32_t>(3 * count)); tries >= 0; --tries) {
      const std::int32_t from = below(static_cast<std::uint32_t>(count));
      const std::int32_t to = below(static_cast<std::uint32_t>(count));
      if (from == to) continue;
      const double length = 100.0 * (1 + below(3));
      const double heightDiff = below(40) / 2.0 + 0.5;
      observations[Name(from)][Name(to)] = {length, -1.0, heightDiff, -1.0};
    }
    for (const auto& [station, targets] : observations) {
      for (const auto& [target, o] : targets) {
        lines.push_back({NumberOf(station), NumberOf(target), o.distance, o.heightDiff});
      }
    }
  }

  std::string Name(std::int32_t point) const {
    return points[static_cast<std::size_t>(point)].name;
  }
  std::int32_t NumberOf(const std::string& name) const {
    const auto found = std::find_if(points.begin(), points.end(),
                                    [&name](const PointData& p) { return name == p.name; });
    return static_cast<std::int32_t>(found - points.begin());
  }
};

constexpr std::uint32_t kRandomNets = 400;

// By point: the point before it on its route (-1 without a route), and the sums along the route.
struct PassRoutes {
  std::vector<std::int32_t> before;
  std::vector<double> length, heightDiff;

  // Passes over all lines until nothing changes; only strictly shorter routes replace others.
  PassRoutes(const RandomNet& net, std::int32_t source, std::int32_t excluded)
      : before(net.points.size(), -1),
        length(net.points.size(), 1e30),
        heightDiff(net.points.size(), 0.0) {
    const auto at = [](std::int32_t i) { return static_cast<std::size_t>(i); };
    before[at(source)] = source;
    length[at(source)] = 0.0;
    for (bool changed = true; changed;) {
      changed = false;
      for (std::int32_t k = 0; k < static_cast<std::int32_t>(net.lines.size()); ++k) {
        const RandomNet::Line& line = net.lines[at(k)];
        const std::size_t i = at(line.station);
        const std::size_t j = at(line.target);
        if (k == excluded || (before[i] < 0 && before[j] < 0)) continue;
        if (length[j] > length[i] + line.length) {
          before[j] = line.station;
          length[j] = length[i] + line.length;
          heightDiff[j] = heightDiff[i] + line.heightDiff;
          changed = true;
        } else if (length[i] > length[j] + line.length) {
          before[i] = line.target;
          length[i] = length[j] + line.length;
          heightDiff[i] = heightDiff[j] - line.heightDiff;
          changed = true;
        }
      }
    }
  }

  bool IsReached(std::int32_t point) const { return before[static_cast<std::size_t>(point)] >= 0; }

  // The points from `start` back to the source.
  std::vector<std::int32_t> Back(std::int32_t start) const {
    std::vector<std::int32_t> route{start};
    while (before[static_cast<std::size_t>(route.back())] != route.back()) {
      route.push_back(before[static_cast<std::size_t>(route.back())]);
    }
    return route;
  }
};

}  // namespace brenu::testing
