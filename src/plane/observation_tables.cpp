#include "plane/observation_tables.h"

#include <algorithm>

#include "core/angles.h"

namespace brenu {

ObservationTables::ObservationTables(const NetworkLayout& layout, bool distancesOnly) {
  for (const SightNo sight : layout.Sights().Indices()) {
    const Sight& s = layout.At(sight);
    if (HasDirection(s.obs) && !distancesOnly) {
      const auto place = static_cast<std::int32_t>(directions.size());
      const bool newSet = directions.empty() || directions.back().from != s.station;
      if (newSet) sets.push_back({place, place});
      directions.push_back({sight, s.station, s.target, DmsToRad(s.obs.direction)});
      sets.back().end = place + 1;
    }
    if (HasDistance(s.obs)) distances.push_back({sight, s.station, s.target, s.obs.distance});
    if (HasAzimuth(s.obs) && !distancesOnly) {
      azimuths.push_back({sight, s.station, s.target, DmsToRad(s.obs.azimuth)});
    }
  }
  storedCount = static_cast<std::int32_t>(directions.size() + distances.size() + azimuths.size());
  storedSetCount = static_cast<std::int32_t>(sets.size());
}

bool ObservationTables::HasDirectionInUse(const DirectionSet& set) const {
  return std::any_of(directions.begin() + set.first, directions.begin() + set.end,
                     [](const PlaneObs& o) { return o.inUse; });
}

const PlaneObs* FindObs(const std::vector<PlaneObs>& table, SightNo sight) {
  const auto found =
      std::lower_bound(table.begin(), table.end(), sight,
                       [](const PlaneObs& o, SightNo wanted) { return o.sight < wanted; });
  return found != table.end() && found->sight == sight ? &*found : nullptr;
}

}  // namespace brenu
