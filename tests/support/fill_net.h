// Generated networks without a context, for looking inside.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "bench/grid_network.h"
#include "core/records.h"

namespace brenu::testing {

// Known points first, as networks want them.
template <typename Net>
std::shared_ptr<const Net> MakeNet(const GeneratedNetwork& network) {
  std::vector<PointData> points;
  for (const PointData& p : network.points) {
    if (p.type != 0) points.push_back(p);
  }
  const auto known = static_cast<std::int32_t>(points.size());
  for (const PointData& p : network.points) {
    if (p.type == 0) points.push_back(p);
  }
  ObservationMap observations;
  for (const auto& line : network.lines) {
    const auto name = [&](std::int32_t i) {
      return network.points[static_cast<std::size_t>(i)].name;
    };
    observations[name(line.station)].emplace(name(line.target), line.obs);
  }
  return std::make_shared<Net>(points, known, observations, network.param);
}

}  // namespace brenu::testing
