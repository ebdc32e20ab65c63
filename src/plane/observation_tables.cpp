#include "plane/observation_tables.h"

#include <algorithm>

#include "core/angles.h"

namespace brenu {

ObservationTables::ObservationTables(const NetworkLayout& layout, bool distancesOnly) {
  const auto countOf = [&](bool (*has)(const ObsData&)) {
    return static_cast<std::size_t>(std::count_if(layout.Sights().begin(), layout.Sights().end(),
                                                  [&](const Sight& s) { return has(s.obs); }));
  };
  if (!distancesOnly) {
    directions.reserve(countOf(HasDirection));
    azimuths.reserve(countOf(HasAzimuth));
  }
  distances.reserve(countOf(HasDistance));
  m_places.Assign(layout.Sights().Size(), {});
  for (const SightNo sight : layout.Sights().Indices()) {
    const Sight& s = layout.At(sight);
    Places& places = m_places[sight];
    const auto add = [&](std::vector<PlaneObs>& table, double observed) {
      table.push_back({.sight = sight, .from = s.station, .to = s.target, .observed = observed});
      return static_cast<std::int32_t>(table.size()) - 1;
    };
    if (HasDirection(s.obs) && !distancesOnly) {
      const bool newSet = directions.empty() || directions.back().from != s.station;
      places.direction = add(directions, DmsToRad(s.obs.direction));
      if (newSet) sets.push_back({places.direction, places.direction});
      sets.back().end = places.direction + 1;
    }
    if (HasDistance(s.obs)) places.distance = add(distances, s.obs.distance);
    if (HasAzimuth(s.obs) && !distancesOnly) {
      places.azimuth = add(azimuths, DmsToRad(s.obs.azimuth));
    }
  }
  storedCount = static_cast<std::int32_t>(directions.size() + distances.size() + azimuths.size());
  storedSetCount = static_cast<std::int32_t>(sets.size());
}

void ObservationTables::ForgetDirections() {
  directions.clear();
  sets.clear();
  for (Places& places : m_places) places.direction = -1;
}

void ObservationTables::AddDirection(const PlaneObs& direction) {
  m_places[direction.sight].direction = static_cast<std::int32_t>(directions.size());
  directions.push_back(direction);
}

bool ObservationTables::HasDirectionInUse(const DirectionSet& set) const {
  return std::any_of(directions.begin() + set.first, directions.begin() + set.end,
                     [](const PlaneObs& o) { return o.inUse; });
}

}  // namespace brenu
