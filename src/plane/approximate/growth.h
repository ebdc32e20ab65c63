#pragma once

#include <deque>
#include <vector>

#include "plane/approximate/candidates.h"
#include "plane/approximate/places.h"

namespace brenu::approximate {

// Places point after point from those that are placed already, in whichever way its measures allow:
// by direction and distance, intersection, resection, circles.  What further measures confirm goes
// first, so that a gross error has to wait until something better comes.
class Growth {
 public:
  // What the places are.
  enum class System : std::uint8_t {
    kGrid,       // azimuths count, and stored coordinates of new points are hints
    kPart,       // of a part of the network: only stations oriented beforehand tell directions
    kScaleless,  // the same without regard to distances
    kDistances   // distances alone count
  };
  Growth(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy, Places& places,
         System system);

  // Only points with this mark are placed; all again with null.
  void Restrict(const Table<Slot, std::int32_t>* marks, std::int32_t mark) {
    m_marks = marks;
    m_mark = mark;
  }
  void SetSystem(System system) { m_system = system; }
  // Announces a point or a station that something else has placed or oriented.
  void Announce(Slot slot);
  // Suggests to look at a point.
  void Offer(Slot point);
  // Until nothing more can be placed.
  void Run();
  // Forgets what was announced.
  void Clear();

 private:
  enum class Wanted : std::uint8_t { kChecked, kAny };

  bool TryToPlace(Slot point, Wanted wanted);
  // False without a placed target.
  bool OrientStation(Slot station);
  bool MayPlace(Slot point) const;
  bool UsesReadings() const { return m_system != System::kDistances; }
  std::vector<Measure> MeasuresOf(Slot point) const;
  void AddMeasuresFromStations(Slot point, std::vector<Measure>& measures) const;
  void AddMeasuresAtPoint(Slot point, std::vector<Measure>& measures) const;
  std::optional<Position> HintOf(Slot point) const;

  const NetworkLayout& m_net;
  const Table<PointNo, PointData>& m_points;
  const Rays& m_rays;
  const Accuracy& m_accuracy;
  Places& m_places;
  System m_system;
  const Table<Slot, std::int32_t>* m_marks = nullptr;
  std::int32_t m_mark = 0;
  std::deque<Slot> m_fresh;   // points with new measures
  std::deque<Slot> m_weak;    // points that could be placed, or not, without a check
  Table<Slot, char> m_waits;  // 1 in m_fresh, 2 in m_weak
  Table<Slot, std::int32_t> m_offers;
  std::vector<Slot> m_touched;  // with offers
};

}  // namespace brenu::approximate
