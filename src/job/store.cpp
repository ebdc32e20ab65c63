#include "job/store.h"

#include <cmath>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "core/angles.h"

namespace brenu {

namespace {

Finding WithIndex(Code code, std::int32_t index) {
  return Error(code, {}, {static_cast<double>(index)});
}

Finding WithNames(Code code, std::initializer_list<std::string_view> names) {
  return Error(code, {names.begin(), names.end()});
}

// A name that fills its field is cut to leave room for the NUL.
PointData Terminated(PointData point) {
  point.name[kMaxNameLength] = '\0';
  return point;
}

}  // namespace

Outcome Store::AddPoint(std::int32_t index, const PointData& point) {
  if (index < 0) return WithIndex(BRENU_INDEX_NEGATIVE, index);
  if (m_points.contains(index)) return WithIndex(BRENU_INDEX_TAKEN, index);
  if (m_names.Has(NameOf(point))) return WithNames(BRENU_NAME_TAKEN, {NameOf(point)});
  Insert(index, Terminated(point));
  return {};
}

const PointData& Store::Insert(std::int32_t index, const PointData& point) {
  Touch();
  PointMap added{{index, point}};
  const auto place = static_cast<std::size_t>(index);
  if (IsLow(index) && place >= m_lowPoints.size()) m_lowPoints.resize(place + 1);
  m_names.MakeRoom();
  // Takes no more memory.
  PointData& inserted = m_points.insert(added.extract(index)).position->second;
  m_names.Add(NameOf(inserted), index, inserted);
  if (index >= 0 && place < m_lowPoints.size()) m_lowPoints[place] = &inserted;
  return inserted;
}

Outcome Store::DeletePoint(std::int32_t index) {
  Touch();
  auto place = m_points.find(index);
  if (place == m_points.end()) return WithIndex(BRENU_INDEX_UNKNOWN, index);
  const std::string name(NameOf(place->second));
  m_observations.erase(name);
  for (auto& [station, targets] : m_observations) targets.erase(name);

  m_names.Remove(name, index);
  for (auto next = std::next(place); next != m_points.end(); place = next++) {
    m_names.Move(NameOf(next->second), next->first, place->first, place->second);
    place->second = next->second;
  }
  const auto last = static_cast<std::size_t>(place->first);
  if (place->first >= 0 && last < m_lowPoints.size()) m_lowPoints[last] = nullptr;
  m_points.erase(place);
  return {};
}

Outcome Store::SetPoint(std::int32_t index, const PointData& point) {
  Touch();
  const auto place = m_points.find(index);
  if (place == m_points.end()) return WithIndex(BRENU_INDEX_UNKNOWN, index);
  const std::string oldName(NameOf(place->second));
  const std::string newName(NameOf(point));
  if (oldName == newName) {
    place->second = Terminated(point);
    return {};
  }
  // All memory is taken before the first change.
  const bool isStation = m_observations.contains(newName);
  std::vector<std::string> copies(isStation ? 0 : CountInObservations(oldName), newName);
  Outcome outcome;
  if (isStation) outcome = WithNames(BRENU_NAME_IS_STATION, {newName});
  place->second = Terminated(point);
  m_names.Remove(oldName, index);
  m_names.Add(newName, index, place->second);
  RenameInObservations(oldName, std::move(copies));
  return outcome;
}

std::size_t Store::CountInObservations(std::string_view name) const {
  std::size_t count = m_observations.contains(name) ? 1 : 0;
  for (const auto& entry : m_observations) count += entry.second.contains(name) ? 1 : 0;
  return count;
}

void Store::RenameInObservations(std::string_view from, std::vector<std::string> to) noexcept {
  const auto rename = [&](auto& map, auto place) {
    auto node = map.extract(place);
    node.key() = std::move(to.back());
    to.pop_back();
    // A record under the new name gives way.
    if (auto inserted = map.insert(std::move(node)); !inserted.inserted) {
      inserted.position->second = std::move(inserted.node.mapped());
    }
  };
  if (to.empty()) return;
  if (const auto place = m_observations.find(from); place != m_observations.end()) {
    rename(m_observations, place);
  }
  for (auto& entry : m_observations) {
    const auto old = entry.second.find(from);
    if (old != entry.second.end()) rename(entry.second, old);
  }
}

const PointData* Store::FindPoint(std::int32_t index) const {
  const bool isLow = index >= 0 && static_cast<std::size_t>(index) < m_lowPoints.size();
  const PointData* const low = isLow ? m_lowPoints[static_cast<std::size_t>(index)] : nullptr;
  if (low != nullptr) return low;
  const auto place = m_points.find(index);
  return place == m_points.end() ? nullptr : &place->second;
}

const PointData& Store::PointOrEmpty(std::int32_t index) {
  const PointData* const point = FindPoint(index);
  return point != nullptr ? *point : Insert(index, PointData{});
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

Outcome Store::AddObs(std::int32_t station, std::string_view target, const ObsData& obs) {
  Touch();
  const PointData* point = FindPoint(station);
  if (point == nullptr) return WithIndex(BRENU_INDEX_UNKNOWN, station);
  if (target == NameOf(*point)) return WithNames(BRENU_TARGET_IS_STATION, {target});
  if (!m_names.Has(target)) return WithNames(BRENU_TARGET_UNKNOWN, {target});
  const auto entry = m_observations.find(NameOf(*point));
  if (entry == m_observations.end()) {
    m_observations.emplace(NameOf(*point), TargetMap{{std::string(target), obs}});
  } else if (!entry->second.try_emplace(std::string(target), obs).second) {
    return WithNames(BRENU_PAIR_TAKEN, {NameOf(*point), target});
  }
  return {};
}

Outcome Store::SetObs(std::int32_t station, std::string_view target, const ObsData& obs) {
  Touch();
  ObsData* stored = FindObs(station, target);
  if (stored == nullptr) return WithNames(BRENU_PAIR_UNKNOWN, {target});
  *stored = obs;
  return {};
}

Outcome Store::DeleteObs(std::int32_t station, std::string_view target) {
  Touch();
  const PointData* point = FindPoint(station);
  if (point == nullptr) return WithIndex(BRENU_INDEX_UNKNOWN, station);
  const auto entry = m_observations.find(NameOf(*point));
  if (entry != m_observations.end()) {
    if (const auto place = entry->second.find(target); place != entry->second.end()) {
      entry->second.erase(place);
      return {};
    }
  }
  return WithNames(BRENU_PAIR_UNKNOWN, {target});
}

Outcome Store::AddObsPair(std::int32_t station, std::string_view target1, std::string_view target2,
                          const ObsData& obs1, const ObsData& obs2) {
  if (Outcome first = AddObs(station, target1, obs1); !first.ok) return first;
  if (Outcome second = AddObs(station, target2, obs2); !second.ok) return second;
  m_anglePairs[station].insert_or_assign(std::string(target2), std::string(target1));
  return {};
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

Outcome Store::AddReconciledObs(std::int32_t station, std::string_view target1,
                                std::string_view target2, const ObsData& obs1,
                                const ObsData& obs2) {
  // With both targets stored the addition is refused, whichever of them is the reference.
  const bool isFirstReference = FindObs(station, target1) != nullptr;
  const std::string_view other = isFirstReference ? target2 : target1;
  ObsData added = isFirstReference ? obs2 : obs1;
  if (HasDirection(added) && FindObs(station, other) == nullptr) {
    const auto stored = StoredDirection(station, isFirstReference ? target1 : target2);
    const double reading = isFirstReference ? obs1.direction : obs2.direction;
    if (!stored || reading == kAbsentAngle) {
      return WithNames(BRENU_NO_REFERENCE_DIRECTION, {target1, target2});
    }
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
