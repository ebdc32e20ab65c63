#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "core/network_layout.h"
#include "core/records.h"

namespace brenu {

// The height network as the network build made it: bench marks first among the points, and the
// levelled height differences as its sights.  It never changes; computations hold on to it.
struct LevelNet {
  LevelNet(std::vector<PointData> numberedPoints, std::int32_t knownPointCount,
           const ObservationMap& observations, const AdjParam& parameters)
      : layout(numberedPoints, knownPointCount, observations, IsLevelled),
        points(std::move(numberedPoints)),
        param(parameters) {}
  LevelNet() = default;

  NetworkLayout layout;              // records without length or height difference are left out
  Table<PointNo, PointData> points;  // as stored
  AdjParam param = kDefaultParam;
};

}  // namespace brenu
