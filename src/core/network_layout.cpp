#include "core/network_layout.h"

#include <algorithm>
#include <utility>

namespace brenu {

NetworkLayout::NetworkLayout(std::span<const PointData> points, std::int32_t controlCount,
                             const ObservationMap& observations, bool (*accept)(const ObsData&))
    : m_controlCount(controlCount) {
  std::vector<std::string_view> names;
  names.reserve(points.size());
  for (const PointData& point : points) names.push_back(NameOf(point));
  m_names = NameTable(names);
  // Names of stations and targets that are no points are rare: only they begin anew.
  const std::vector<std::string_view> others = CollectSights(observations, accept);
  if (!others.empty()) {
    names.insert(names.end(), others.begin(), others.end());
    m_names = NameTable(std::move(names));
    CollectSights(observations, accept);
  }
  IndexSightsByTarget();

  m_pointOfSlot.Assign(static_cast<std::size_t>(m_names.Count()), PointNo());
  m_slotOfPoint.Reserve(points.size());
  for (const PointData& point : points) {
    const Slot slot = m_names.Find(NameOf(point));
    if (m_pointOfSlot[slot].IsNone()) m_pointOfSlot[slot] = PointNo(PointCount());
    m_slotOfPoint.Add(slot);
  }
}

// Gives the names that are missing among the slots; the sights are of use when there are none.
std::vector<std::string_view> NetworkLayout::CollectSights(const ObservationMap& observations,
                                                           bool (*accept)(const ObsData&)) {
  std::vector<std::string_view> missing;
  std::size_t count = 0;
  for (const auto& entry : observations) count += entry.second.size();
  m_sights.Clear();
  m_sights.Reserve(count);
  m_firstSight.Clear();
  m_firstSight.Reserve(static_cast<std::size_t>(m_names.Count()) + 1);
  const Slot end(static_cast<std::size_t>(m_names.Count()) + 1);
  Slot next(0);  // the first slot of which it is not yet known where its sights begin
  const auto beginUpTo = [&](Slot slot) {
    for (; next < slot; ++next) m_firstSight.Add(SightNo(m_sights.Size()));
  };
  for (const auto& [name, targets] : observations) {
    const Slot station = m_names.Find(name);
    if (!station.IsNone()) {
      beginUpTo(station);
      m_firstSight.Add(SightNo(m_sights.Size()));
      ++next;
    }
    const std::size_t before = m_sights.Size();
    for (const auto& [target, obs] : targets) {
      if (!accept(obs)) continue;
      const Slot slot = m_names.Find(target);
      if (slot.IsNone()) missing.push_back(target);
      m_sights.Add({station, slot, obs});
    }
    if (station.IsNone() && m_sights.Size() > before) missing.push_back(name);
  }
  beginUpTo(end);
  return missing;
}

void NetworkLayout::IndexSightsByTarget() {
  std::vector<std::int32_t> next(static_cast<std::size_t>(m_names.Count()) + 1, 0);
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
