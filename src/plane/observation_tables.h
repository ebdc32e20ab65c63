#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/network_layout.h"

namespace brenu {

// One observation of the plane network.
struct PlaneObs {
  SightNo sight;          // its sight in the layout
  Slot from, to;          // names of station and target
  bool inUse = true;      // cleared when data snooping takes the observation out
  bool leftOut = false;   // an end of it is no point, or could not be determined; then not in use
  double observed;        // radians, or metres for a distance
  double residual = 0.0;  // reduced observation, later residual: arc-seconds, or metres
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

  // Directions that stand in the place of those observed, in walk order and without sets.
  void ForgetDirections();
  void AddDirection(const PlaneObs& direction);

  bool HasDirectionInUse(const DirectionSet& set) const;
  // What was observed at a sight; null when that kind was not.
  const PlaneObs* FindDirection(SightNo sight) const {
    return At(directions, sight, &Places::direction);
  }
  const PlaneObs* FindDistance(SightNo sight) const {
    return At(distances, sight, &Places::distance);
  }
  const PlaneObs* FindAzimuth(SightNo sight) const { return At(azimuths, sight, &Places::azimuth); }

  std::vector<PlaneObs> directions;
  std::vector<PlaneObs> distances;
  std::vector<PlaneObs> azimuths;
  std::vector<DirectionSet> sets;
  std::int32_t storedCount = 0;     // observations of all kinds in the layout
  std::int32_t storedSetCount = 0;  // stations with a direction in the layout

 private:
  // Where the observations of a sight stand in their tables; -1 for none.
  struct Places {
    std::int32_t direction = -1;
    std::int32_t distance = -1;
    std::int32_t azimuth = -1;
  };
  const PlaneObs* At(const std::vector<PlaneObs>& table, SightNo sight,
                     std::int32_t Places::*kind) const {
    if (!m_places.Has(sight)) return nullptr;
    const std::int32_t place = m_places[sight].*kind;
    return place < 0 ? nullptr : &table[static_cast<std::size_t>(place)];
  }

  Table<SightNo, Places> m_places;
};

}  // namespace brenu
