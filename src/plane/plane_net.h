#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "core/network_layout.h"
#include "core/records.h"

namespace brenu {

// The horizontal network as the network build made it: control points first among the points, and
// all stored pairs as its sights.  It never changes; computations hold on to it.
struct PlaneNet {
  PlaneNet(std::vector<PointData> numberedPoints, std::int32_t knownPointCount,
           const ObservationMap& observations, const AdjParam& parameters)
      : layout(numberedPoints, knownPointCount, observations, [](const ObsData&) { return true; }),
        points(std::move(numberedPoints)),
        stationCount(static_cast<std::int32_t>(observations.size())),
        param(parameters) {}
  PlaneNet() = default;

  // Without points or stations no computation begins.
  bool IsEmpty() const { return points.IsEmpty() || stationCount == 0; }

  NetworkLayout layout;
  Table<PointNo, PointData> points;  // as stored
  std::int32_t stationCount = 0;     // station entries of the store, without targets too
  AdjParam param = kDefaultParam;
  // Whose relative precision will be asked for, beyond that of the sights.
  std::vector<std::pair<Slot, Slot>> askedPairs;
};

}  // namespace brenu
