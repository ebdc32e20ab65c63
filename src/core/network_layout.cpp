#include "core/network_layout.h"

#include <algorithm>
#include <utility>

namespace brenu {

namespace {

NameTable CollectNames(std::span<const PointData> points, const ObservationMap& observations,
                       bool (*accept)(const ObsData&)) {
  std::vector<std::string_view> names;
  names.reserve(points.size());
  for (const PointData& point : points) names.push_back(NameOf(point));
  std::sort(names.begin(), names.end());
  // Names of stations and targets that are no points are rare: only those are added.
  const std::size_t pointNames = names.size();
  const auto add = [&](const std::string& name) {
    const auto end = names.begin() + static_cast<std::ptrdiff_t>(pointNames);
    if (!std::binary_search(names.begin(), end, std::string_view(name))) names.push_back(name);
  };
  for (const auto& [station, targets] : observations) {
    bool used = false;
    for (const auto& [target, obs] : targets) {
      if (!accept(obs)) continue;
      add(target);
      used = true;
    }
    if (used) add(station);
  }
  return NameTable(std::move(names));
}

}  // namespace

NetworkLayout::NetworkLayout(std::span<const PointData> points, std::int32_t controlCount,
                             const ObservationMap& observations, bool (*accept)(const ObsData&))
    : m_names(CollectNames(points, observations, accept)), m_controlCount(controlCount) {
  m_pointOfSlot.assign(static_cast<std::size_t>(m_names.Count()), -1);
  m_slotOfPoint.reserve(points.size());
  for (const PointData& point : points) {
    const std::int32_t slot = m_names.Find(NameOf(point));
    std::int32_t& first = m_pointOfSlot[static_cast<std::size_t>(slot)];
    if (first < 0) first = PointCount();
    m_slotOfPoint.push_back(slot);
  }
  CollectSights(observations, accept);
  IndexSightsByTarget();
}

void NetworkLayout::CollectSights(const ObservationMap& observations,
                                  bool (*accept)(const ObsData&)) {
  m_firstSight.assign(m_pointOfSlot.size() + 1, 0);
  for (const auto& [name, targets] : observations) {
    const std::int32_t station = m_names.Find(name);
    if (station < 0) continue;  // none of its sights is taken
    for (const auto& [target, obs] : targets) {
      if (accept(obs)) m_sights.push_back({station, m_names.Find(target), obs});
    }
    m_firstSight[static_cast<std::size_t>(station) + 1] =
        static_cast<std::int32_t>(m_sights.size());
  }
  // Slots that are no stations begin and end where the slot before them ended.
  for (std::size_t i = 1; i < m_firstSight.size(); ++i) {
    m_firstSight[i] = std::max(m_firstSight[i], m_firstSight[i - 1]);
  }
}

void NetworkLayout::IndexSightsByTarget() {
  m_firstToTarget.assign(m_pointOfSlot.size() + 1, 0);
  for (const Sight& s : m_sights) ++m_firstToTarget[static_cast<std::size_t>(s.target) + 1];
  for (std::size_t i = 1; i < m_firstToTarget.size(); ++i) {
    m_firstToTarget[i] += m_firstToTarget[i - 1];
  }
  std::vector<std::int32_t> next(m_firstToTarget.begin(), m_firstToTarget.end() - 1);
  m_sightsTo.resize(m_sights.size());
  for (std::size_t k = 0; k < m_sights.size(); ++k) {
    const std::int32_t place = next[static_cast<std::size_t>(m_sights[k].target)]++;
    m_sightsTo[static_cast<std::size_t>(place)] = static_cast<std::int32_t>(k);
  }
}

std::int32_t NetworkLayout::IndexOfPoint(std::string_view name) const {
  const std::int32_t slot = m_names.Find(name);
  return slot < 0 ? -1 : PointOf(slot);
}

std::int32_t NetworkLayout::FindSight(std::int32_t stationSlot, std::int32_t targetSlot) const {
  const Range range = SightsFrom(stationSlot);
  const auto begin = m_sights.begin() + range.first;
  const auto end = m_sights.begin() + range.end;
  const auto found = std::lower_bound(
      begin, end, targetSlot, [](const Sight& s, std::int32_t slot) { return s.target < slot; });
  if (found == end || found->target != targetSlot) return -1;
  return static_cast<std::int32_t>(found - m_sights.begin());
}

std::int32_t NetworkLayout::FindSight(std::string_view station, std::string_view target) const {
  const std::int32_t from = m_names.Find(station);
  const std::int32_t to = m_names.Find(target);
  return from < 0 || to < 0 ? -1 : FindSight(from, to);
}

std::span<const std::int32_t> NetworkLayout::SightsTo(std::int32_t slot) const {
  const auto i = static_cast<std::size_t>(slot);
  const auto first = static_cast<std::size_t>(m_firstToTarget[i]);
  const auto end = static_cast<std::size_t>(m_firstToTarget[i + 1]);
  return std::span(m_sightsTo).subspan(first, end - first);
}

}  // namespace brenu
