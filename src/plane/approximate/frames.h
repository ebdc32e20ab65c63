#pragma once

#include <span>
#include <vector>

#include "plane/approximate/rays.h"

namespace brenu::approximate {

// A point as a station has measured it by direction and distance: its place when the station is at
// (0, 0) and its circle is oriented to the grid.
struct FramePoint {
  Slot point;
  Position place;
};

// The frames of all stations: the station itself and its targets of that kind.
class Frames {
 public:
  Frames(const NetworkLayout& layout, const Rays& rays);

  // Empty for what is no such station; ascending points.
  std::span<const FramePoint> Of(Slot station) const;
  // The stations whose frames a point is in, ascending.
  std::span<const Slot> With(Slot point) const;

 private:
  std::vector<FramePoint> m_points;      // of all stations
  std::vector<std::size_t> m_first;      // by station, with one entry more
  std::vector<Slot> m_stations;          // grouped by point
  std::vector<std::size_t> m_firstWith;  // by point, with one entry more
};

// How two frames with common points are turned against each other.
struct FrameTurn {
  double turn;   // from the first to the second orientation, radians
  double sigma;  // radians
};

// `first` and `second` hold the places of the same points.  Nothing when no two vectors agree in
// length, or too few of many.
bool FindTurn(std::span<const Position> first, std::span<const Position> second,
              const Accuracy& accuracy, FrameTurn& found);

}  // namespace brenu::approximate
