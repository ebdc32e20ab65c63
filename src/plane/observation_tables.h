#pragma once

#include <cstdint>
#include <vector>

#include "core/network_layout.h"

namespace brenu {

// One observation of the plane network.
struct PlaneObs {
  SightNo sight;          // its sight in the layout
  Slot from, to;          // names of station and target
  double observed;        // radians, or metres for a distance
  double residual = 0.0;  // reduced observation, later residual: arc-seconds, or metres
  bool inUse = true;      // cleared when data snooping takes the observation out
  bool leftOut = false;   // an end of it is no point, or could not be determined; then not in use
};

// The directions of one station, which share an orientation.
struct DirectionSet {
  std::int32_t first, end;        // its part of the direction table
  std::int32_t orientation = -1;  // its orientation unknown; -1 when no direction is in use
};

// The observations of a plane network, each kind in walk order (ascending sights).
struct ObservationTables {
  ObservationTables() = default;
  // All observations, or the distances alone.
  explicit ObservationTables(const NetworkLayout& layout, bool distancesOnly = false);

  bool HasDirectionInUse(const DirectionSet& set) const;

  std::vector<PlaneObs> directions;
  std::vector<PlaneObs> distances;
  std::vector<PlaneObs> azimuths;
  std::vector<DirectionSet> sets;
  std::int32_t storedCount = 0;     // observations of all kinds in the layout
  std::int32_t storedSetCount = 0;  // stations with a direction in the layout
};

// The entry of a sight in one of the tables; null when it has none.
const PlaneObs* FindObs(const std::vector<PlaneObs>& table, SightNo sight);

}  // namespace brenu
