#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/name_table.h"
#include "core/records.h"

namespace brenu {

// One stored pair of station and target.
struct Sight {
  std::int32_t station;  // slot of the station's name
  std::int32_t target;   // slot of the target's name
  ObsData obs;
};

// Who is connected with whom in a network, in dense numbers; fixed once it is made.
//
// Three numberings meet here: points have the network's point numbers (control points first),
// names have slots (byte order), and the stored pairs are sights, numbered in walk order: stations
// in ascending name order, the targets of each in ascending name order.  A name may belong to
// several points (the lowest number counts) or, after a refused renaming, to none.
class NetworkLayout {
 public:
  NetworkLayout() = default;
  // Takes the sights of `observations` for which `accept` holds.
  NetworkLayout(std::span<const PointData> points, std::int32_t controlCount,
                const ObservationMap& observations, bool (*accept)(const ObsData&));

  std::int32_t PointCount() const { return static_cast<std::int32_t>(m_slotOfPoint.size()); }
  std::int32_t ControlCount() const { return m_controlCount; }
  std::int32_t SlotCount() const { return m_names.Count(); }
  const NameTable& Names() const { return m_names; }

  std::int32_t SlotOf(std::int32_t point) const {
    return m_slotOfPoint[static_cast<std::size_t>(point)];
  }
  // The lowest number of a point of that name, -1 when there is none.
  std::int32_t PointOf(std::int32_t slot) const {
    return m_pointOfSlot[static_cast<std::size_t>(slot)];
  }
  std::int32_t IndexOfPoint(std::string_view name) const;

  std::span<const Sight> Sights() const { return m_sights; }
  // The numbers of the sights taken at a station (none when it is no station).
  struct Range {
    std::int32_t first, end;
    bool Empty() const { return first == end; }
  };
  Range SightsFrom(std::int32_t slot) const {
    const auto i = static_cast<std::size_t>(slot);
    return {m_firstSight[i], m_firstSight[i + 1]};
  }
  // -1 when the pair is not stored.
  std::int32_t FindSight(std::int32_t stationSlot, std::int32_t targetSlot) const;
  std::int32_t FindSight(std::string_view station, std::string_view target) const;
  // The numbers of the sights to a target, ascending.
  std::span<const std::int32_t> SightsTo(std::int32_t slot) const;

 private:
  void CollectSights(const ObservationMap& observations, bool (*accept)(const ObsData&));
  void IndexSightsByTarget();

  NameTable m_names;
  std::int32_t m_controlCount = 0;
  std::vector<std::int32_t> m_slotOfPoint;    // by point number
  std::vector<std::int32_t> m_pointOfSlot;    // by slot
  std::vector<Sight> m_sights;                // by sight number
  std::vector<std::int32_t> m_firstSight;     // by slot of the station, with one entry more
  std::vector<std::int32_t> m_firstToTarget;  // by slot of the target, with one entry more
  std::vector<std::int32_t> m_sightsTo;       // sight numbers grouped by target
};

}  // namespace brenu
