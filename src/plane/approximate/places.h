#pragma once

#include <cmath>
#include <vector>

#include "plane/approximate/rays.h"

namespace brenu::approximate {

// Where points are and how stations are oriented, as far as it is known, in one system: the grid,
// or that of a part of the network on its own.
class Places {
 public:
  explicit Places(std::size_t slotCount) {
    m_place.Assign(slotCount, {kNone, kNone});
    m_orientation.Assign(slotCount, kNone);
  }

  bool IsPlaced(Slot slot) const { return !std::isnan(m_place[slot].x); }
  const Position& At(Slot slot) const { return m_place[slot]; }
  void Place(Slot slot, const Position& position) {
    if (!IsPlaced(slot)) m_points.push_back(slot);
    m_place[slot] = position;
  }
  // In the order in which they were placed.
  const std::vector<Slot>& Points() const { return m_points; }

  bool IsOriented(Slot station) const { return !std::isnan(m_orientation[station]); }
  double Orientation(Slot station) const { return m_orientation[station]; }
  void Orient(Slot station, double orientation) {
    if (!IsOriented(station)) m_stations.push_back(station);
    m_orientation[station] = orientation;
  }
  const std::vector<Slot>& OrientedStations() const { return m_stations; }

  // Forgets everything, in the time that it took to enter it.
  void Clear();

 private:
  Table<Slot, Position> m_place;
  Table<Slot, double> m_orientation;
  std::vector<Slot> m_points, m_stations;
};

inline void Places::Clear() {
  for (const Slot slot : m_points) m_place[slot] = {kNone, kNone};
  for (const Slot slot : m_stations) m_orientation[slot] = kNone;
  m_points.clear();
  m_stations.clear();
}

}  // namespace brenu::approximate
