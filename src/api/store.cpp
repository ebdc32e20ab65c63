#include "api/store.h"

#include <cmath>
#include <string>
#include <utility>

#include "core/angles.h"

namespace brenu {

namespace {

// A name that fills its field is cut to leave room for the NUL.
PointData Terminated(PointData point) {
  point.name[kMaxNameLength] = '\0';
  return point;
}

}  // namespace

void Store::Clear() {
  m_points.clear();
  m_names.Clear();
  m_observations.clear();
  m_anglePairs.clear();
}

std::int32_t Store::AddPoint(std::int32_t index, const PointData& point) {
  if (index < 0 || m_points.contains(index) || m_names.Has(NameOf(point))) return -1;
  const auto place = m_points.emplace(index, Terminated(point)).first;
  m_names.Add(NameOf(place->second), index);
  return index;
}

std::int32_t Store::DeletePoint(std::int32_t index) {
  auto place = m_points.find(index);
  if (place == m_points.end()) return -1;
  const std::string name(NameOf(place->second));
  m_observations.erase(name);
  for (auto& [station, targets] : m_observations) targets.erase(name);

  m_names.Remove(name, index);
  for (auto next = std::next(place); next != m_points.end(); place = next++) {
    m_names.Remove(NameOf(next->second), next->first);
    m_names.Add(NameOf(next->second), place->first);
    place->second = next->second;
  }
  m_points.erase(place);
  return index;
}

std::int32_t Store::SetPoint(std::int32_t index, const PointData& point) {
  const auto place = m_points.find(index);
  if (place == m_points.end()) return -1;
  const std::string oldName(NameOf(place->second));
  place->second = Terminated(point);
  const std::string newName(NameOf(point));
  if (oldName == newName) return index;
  m_names.Remove(oldName, index);
  m_names.Add(newName, index);
  return RenameInObservations(oldName, newName) ? index : -1;
}

bool Store::RenameInObservations(std::string_view from, std::string_view to) {
  if (m_observations.contains(to)) return false;
  if (const auto place = m_observations.find(from); place != m_observations.end()) {
    auto station = m_observations.extract(place);
    station.key() = to;
    m_observations.insert(std::move(station));
  }
  for (auto& [station, targets] : m_observations) {
    const auto old = targets.find(from);
    if (old == targets.end()) continue;
    targets.insert_or_assign(std::string(to), old->second);
    targets.erase(old);
  }
  return true;
}

const PointData* Store::FindPoint(std::int32_t index) const {
  const auto place = m_points.find(index);
  return place == m_points.end() ? nullptr : &place->second;
}

const PointData& Store::PointOrEmpty(std::int32_t index) {
  const auto [place, added] = m_points.try_emplace(index, PointData{});
  if (added) m_names.Add({}, index);
  return place->second;
}

const TargetMap* Store::TargetsOf(std::int32_t station) const {
  const PointData* point = FindPoint(station);
  if (point == nullptr) return nullptr;
  const auto place = m_observations.find(NameOf(*point));
  return place == m_observations.end() ? nullptr : &place->second;
}

std::int32_t Store::ObsCount(std::int32_t station) const {
  const TargetMap* targets = TargetsOf(station);
  return targets == nullptr ? 0 : static_cast<std::int32_t>(targets->size());
}

const ObsData* Store::FindObs(std::int32_t station, std::string_view target) const {
  const TargetMap* targets = TargetsOf(station);
  if (targets == nullptr) return nullptr;
  const auto place = targets->find(target);
  return place == targets->end() ? nullptr : &place->second;
}

ObsData* Store::FindObs(std::int32_t station, std::string_view target) {
  return const_cast<ObsData*>(std::as_const(*this).FindObs(station, target));
}

std::int32_t Store::AddObs(std::int32_t station, std::string_view target, const ObsData& obs) {
  const PointData* point = FindPoint(station);
  if (point == nullptr || target == NameOf(*point) || !m_names.Has(target)) return -1;
  auto entry = m_observations.lower_bound(NameOf(*point));
  if (entry == m_observations.end() || entry->first != NameOf(*point)) {
    entry = m_observations.emplace_hint(entry, NameOf(*point), TargetMap());
  }
  return entry->second.try_emplace(std::string(target), obs).second ? station : -1;
}

std::int32_t Store::SetObs(std::int32_t station, std::string_view target, const ObsData& obs) {
  ObsData* stored = FindObs(station, target);
  if (stored == nullptr) return -1;
  *stored = obs;
  return station;
}

std::int32_t Store::DeleteObs(std::int32_t station, std::string_view target) {
  const PointData* point = FindPoint(station);
  if (point == nullptr) return -1;
  const auto entry = m_observations.find(NameOf(*point));
  if (entry == m_observations.end()) return -1;
  const auto place = entry->second.find(target);
  if (place == entry->second.end()) return -1;
  entry->second.erase(place);
  return station;
}

std::int32_t Store::AddObsPair(std::int32_t station, std::string_view target1,
                               std::string_view target2, const ObsData& obs1, const ObsData& obs2) {
  if (AddObs(station, target1, obs1) == -1) return -1;
  if (AddObs(station, target2, obs2) == -1) return -1;
  m_anglePairs[station].insert_or_assign(std::string(target2), std::string(target1));
  return 1;
}

// The stored direction (dd.mmss) of a target or, where it has none, of the other target of a
// registered pair that it belongs to.
std::optional<double> Store::StoredDirection(std::int32_t station, std::string_view target) const {
  const auto directionTo = [&](std::string_view name) -> std::optional<double> {
    const ObsData* obs = FindObs(station, name);
    if (obs == nullptr || !HasDirection(*obs)) return std::nullopt;
    return obs->direction;
  };
  if (const auto direction = directionTo(target)) return direction;
  const auto pairs = m_anglePairs.find(station);
  if (pairs == m_anglePairs.end()) return std::nullopt;
  for (const auto& [second, first] : pairs->second) {
    const bool linked = second == target || first == target;
    const auto direction = linked ? directionTo(second == target ? first : second) : std::nullopt;
    if (direction) return direction;
  }
  return std::nullopt;
}

std::optional<std::int32_t> Store::AddReconciledObs(std::int32_t station, std::string_view target1,
                                                    std::string_view target2, const ObsData& obs1,
                                                    const ObsData& obs2) {
  // With both targets stored the addition is refused, whichever of them is the reference.
  const bool isFirstReference = FindObs(station, target1) != nullptr;
  const std::string_view other = isFirstReference ? target2 : target1;
  ObsData added = isFirstReference ? obs2 : obs1;
  if (HasDirection(added) && FindObs(station, other) == nullptr) {
    const auto stored = StoredDirection(station, isFirstReference ? target1 : target2);
    const double reading = isFirstReference ? obs1.direction : obs2.direction;
    if (!stored || reading == kAbsentAngle) return std::nullopt;
    constexpr double kAgreement = 1e-5;  // of dd.mmss values: a tenth of a second
    if (!(std::fabs(*stored - reading) < kAgreement)) {
      const double turned = DmsToRad(added.direction) + DmsToRad(*stored) - DmsToRad(reading);
      const double dms = RadToDms(FullCircle(turned));
      added.direction = dms < 360.0 ? dms : 0.0;  // rounded up to the full circle
    }
  }
  return AddObs(station, other, added);
}

}  // namespace brenu
