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
  m_pointOfSlot.Assign(static_cast<std::size_t>(m_names.Count()), PointNo());
  m_slotOfPoint.Reserve(points.size());
  for (const PointData& point : points) {
    const Slot slot = m_names.Find(NameOf(point));
    if (m_pointOfSlot[slot].IsNone()) m_pointOfSlot[slot] = PointNo(PointCount());
    m_slotOfPoint.Add(slot);
  }
  CollectSights(observations, accept);
  IndexSightsByTarget();
}

void NetworkLayout::CollectSights(const ObservationMap& observations,
                                  bool (*accept)(const ObsData&)) {
  Slot next(0);  // the first slot of which it is not yet known where its sights begin
  m_firstSight.Reserve(m_pointOfSlot.Size() + 1);
  const auto beginUpTo = [&](Slot end) {
    for (; next < end; ++next) m_firstSight.Add(SightNo(m_sights.Size()));
  };
  for (const auto& [name, targets] : observations) {
    const Slot station = m_names.Find(name);
    if (station.IsNone()) continue;  // none of its sights is taken
    beginUpTo(station);
    m_firstSight.Add(SightNo(m_sights.Size()));
    ++next;
    for (const auto& [target, obs] : targets) {
      if (accept(obs)) m_sights.Add({station, m_names.Find(target), obs});
    }
  }
  beginUpTo(Slot(m_pointOfSlot.Size() + 1));
}

void NetworkLayout::IndexSightsByTarget() {
  std::vector<std::int32_t> next(m_pointOfSlot.Size() + 1, 0);
  for (const Sight& s : m_sights) ++next[s.target.Position() + 1];
  for (std::size_t i = 1; i < next.size(); ++i) next[i] += next[i - 1];
  m_firstToTarget = Table<Slot, std::int32_t>(next);
  m_sightsTo.resize(m_sights.Size());
  for (const SightNo k : m_sights.Indices()) {
    const std::int32_t place = next[m_sights[k].target.Position()]++;
    m_sightsTo[static_cast<std::size_t>(place)] = k;
  }
}

PointNo NetworkLayout::IndexOfPoint(std::string_view name) const {
  const Slot slot = m_names.Find(name);
  return slot.IsNone() ? PointNo() : PointOf(slot);
}

SightNo NetworkLayout::FindSight(Slot station, Slot target) const {
  const auto begin = m_sights.begin() + m_firstSight[station].Number();
  const auto end = m_sights.begin() + EndOf(station).Number();
  const auto found = std::lower_bound(begin, end, target,
                                      [](const Sight& s, Slot slot) { return s.target < slot; });
  if (found == end || found->target != target) return {};
  return SightNo(static_cast<std::size_t>(found - m_sights.begin()));
}

SightNo NetworkLayout::FindSight(std::string_view station, std::string_view target) const {
  const Slot from = m_names.Find(station);
  const Slot to = m_names.Find(target);
  return from.IsNone() || to.IsNone() ? SightNo() : FindSight(from, to);
}

std::span<const SightNo> NetworkLayout::SightsTo(Slot slot) const {
  const auto first = static_cast<std::size_t>(m_firstToTarget[slot]);
  ++slot;
  const auto end = static_cast<std::size_t>(m_firstToTarget[slot]);
  return std::span(m_sightsTo).subspan(first, end - first);
}

}  // namespace brenu
