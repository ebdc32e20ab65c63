#include "fieldbook/station_means.h"

#include <algorithm>

#include "core/angles.h"

namespace brenu {

namespace {

// The weighted mean of what there is so far and an addition.
void Average(SetMean& mean, const SetMean& added, bool isAngle) {
  if (!added.value) return;
  if (!mean.value) {
    mean = added;
    return;
  }
  const double sets = mean.sets + added.sets;
  const double difference =
      isAngle ? HalfCircle(*added.value - *mean.value) : *added.value - *mean.value;
  mean.value = *mean.value + difference * added.sets / sets;
  if (isAngle) mean.value = FullCircle(*mean.value);
  mean.sets = sets;
}

}  // namespace

TargetMeans* StationMeans::Find(NameNo target) {
  const auto place = m_places.find(target.Number());
  return place == m_places.end() ? nullptr : &m_targets[place->second];
}

const TargetMeans* StationMeans::Find(NameNo target) const {
  const auto place = m_places.find(target.Number());
  return place == m_places.end() ? nullptr : &m_targets[place->second];
}

std::optional<double> StationMeans::TurnOf(const std::vector<TargetMeans>& setup) const {
  double sum = 0.0;
  double count = 0.0;
  double start = 0.0;
  for (const TargetMeans& target : setup) {
    const TargetMeans* known = Find(target.target);
    if (known == nullptr || !known->direction.value || !target.direction.value) continue;
    const double difference = *target.direction.value - *known->direction.value;
    if (count == 0.0) start = HalfCircle(difference);
    sum += start + HalfCircle(difference - start);
    count += 1.0;
  }
  return count > 0.0 ? std::optional(sum / count) : std::nullopt;
}

void StationMeans::Add(const std::vector<TargetMeans>& setup, std::int32_t line,
                       ReductionNotes& notes) {
  const auto hasDirection = [](const TargetMeans& t) { return t.direction.value.has_value(); };
  const bool isFirst = std::none_of(m_targets.begin(), m_targets.end(), hasDirection);
  const bool hasAny = std::any_of(setup.begin(), setup.end(), hasDirection);
  const std::optional<double> turn = isFirst ? std::optional(0.0) : TurnOf(setup);
  if (hasAny && !turn) {
    notes.findings.push_back({BRENU_SETUP_WITHOUT_COMMON_TARGET,
                              Severity::kWarning,
                              line,
                              {},
                              {notes.names[m_station]},
                              {}});
  }
  for (TargetMeans added : setup) {
    notes.log.place = {{}, notes.log.place.book, added.line, m_station, added.target, 0, 0, 0, 0};
    if (!turn) added.direction = {};
    if (added.direction.value && !isFirst) {
      const double turned = FullCircle(*added.direction.value - *turn);
      notes.log.Add(Step::kSetupTurned, *added.direction.value, -*turn, turned);
      added.direction.value = turned;
    }
    TargetMeans* known = Find(added.target);
    if (known == nullptr) {
      m_places.emplace(added.target.Number(), m_targets.size());
      m_targets.push_back(added);
      continue;
    }
    const TargetMeans before = *known;
    Average(known->direction, added.direction, true);
    Average(known->distance, added.distance, false);
    Average(known->azimuth, added.azimuth, true);
    Average(known->height, added.height, false);
    if (!known->slopeDistance) known->slopeDistance = added.slopeDistance;
    known->lacksHeights = known->lacksHeights || added.lacksHeights;
    if (before.direction.value && added.direction.value) {
      notes.log.Add(Step::kSetupsDirection, *before.direction.value,
                    HalfCircle(*known->direction.value - *before.direction.value),
                    *known->direction.value);
    }
    if (before.distance.value && added.distance.value) {
      notes.log.Add(Step::kSetupsDistance, *before.distance.value, *known->distance.value);
    }
  }
}

}  // namespace brenu
