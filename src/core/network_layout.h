#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/index.h"
#include "core/name_table.h"
#include "core/records.h"

namespace brenu {

// Numbers of the points of a network: control points first, each kind in the order of the store.
using PointNo = Index<struct PointKind>;
// Numbers of stored pairs in walk order: stations in name order, the targets of each in name order.
using SightNo = Index<struct SightKind>;

// One stored pair of station and target.
struct Sight {
  Slot station, target;  // of their names
  ObsData obs;
};

// Who is connected with whom in a network, in dense numbers; fixed once it is made.
//
// Three numberings meet here: points have the network's point numbers, names have slots (byte
// order), and the stored pairs are sights.  A name may belong to several points (the lowest number
// counts) or, after a refused renaming, to none.
class NetworkLayout {
 public:
  NetworkLayout() = default;
  // Takes the sights of `observations` for which `accept` holds.
  NetworkLayout(std::span<const PointData> points, std::int32_t controlCount,
                const ObservationMap& observations, bool (*accept)(const ObsData&));

  std::int32_t PointCount() const { return static_cast<std::int32_t>(m_slotOfPoint.Size()); }
  std::int32_t ControlCount() const { return m_controlCount; }
  std::int32_t NewPointCount() const { return PointCount() - m_controlCount; }
  IndexRange<PointNo> Points() const { return m_slotOfPoint.Indices(); }
  IndexRange<PointNo> ControlPoints() const { return {PointNo(0), PointNo(m_controlCount)}; }
  IndexRange<PointNo> NewPoints() const { return {PointNo(m_controlCount), PointNo(PointCount())}; }
  bool IsControl(PointNo point) const { return !point.IsNone() && point.Number() < m_controlCount; }

  const NameTable& Names() const { return m_names; }
  IndexRange<Slot> Slots() const { return m_pointOfSlot.Indices(); }
  Slot SlotOf(PointNo point) const { return m_slotOfPoint[point]; }
  // The lowest number of a point of that name, none when there is no such point.
  PointNo PointOf(Slot slot) const { return m_pointOfSlot[slot]; }
  PointNo IndexOfPoint(std::string_view name) const;

  const Table<SightNo, Sight>& Sights() const { return m_sights; }
  const Sight& At(SightNo sight) const { return m_sights[sight]; }
  // The sights taken at a station (none when it is no station).
  IndexRange<SightNo> SightsFrom(Slot slot) const { return {m_firstSight[slot], EndOf(slot)}; }
  // The sights to a target, ascending.
  std::span<const SightNo> SightsTo(Slot slot) const;
  // None when the pair is not stored.
  SightNo FindSight(Slot station, Slot target) const;
  SightNo FindSight(std::string_view station, std::string_view target) const;
  // What was observed from one to the other; null when the pair is not stored.
  const ObsData* FindObs(Slot station, Slot target) const {
    const SightNo k = FindSight(station, target);
    return k.IsNone() ? nullptr : &m_sights[k].obs;
  }

 private:
  SightNo EndOf(Slot slot) const {
    ++slot;
    return m_firstSight[slot];
  }
  std::vector<std::string_view> CollectSights(const ObservationMap& observations,
                                              bool (*accept)(const ObsData&));
  void IndexSightsByTarget();

  NameTable m_names;
  std::int32_t m_controlCount = 0;
  Table<PointNo, Slot> m_slotOfPoint;
  Table<Slot, PointNo> m_pointOfSlot;
  Table<SightNo, Sight> m_sights;
  Table<Slot, SightNo> m_firstSight;          // of the station, with one entry more
  Table<Slot, std::int32_t> m_firstToTarget;  // in m_sightsTo, with one entry more
  std::vector<SightNo> m_sightsTo;            // grouped by target
};

}  // namespace brenu
