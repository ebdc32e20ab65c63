// Working coordinates of a plane network, by name.
#pragma once

#include "core/network_layout.h"
#include "plane/plane_net.h"

namespace brenu {

struct Position {
  double x, y;  // metres
};

// X and Y, after an adjustment with their precision.
using Coordinates = Table<Slot, PlaneResult>;

// A coordinate that is not yet computed, and the value from which on it counts as such.
inline constexpr double kNoCoordinate = 1e30;
inline constexpr double kNoCoordinateLimit = 1e29;

inline bool HasCoordinates(const PlaneResult& point) { return point.x < kNoCoordinateLimit; }

// Those of the control points; the others have none.
inline Coordinates StartingCoordinates(const PlaneNet& net) {
  constexpr PlaneResult kUnreached = {kNoCoordinate, kNoCoordinate, 0, 0, 0, 0, 0, 0};
  Coordinates coords;
  coords.Assign(net.layout.Slots().Size(), kUnreached);
  for (const PointNo i : net.layout.Points()) {
    const bool known = net.layout.IsControl(i);
    PlaneResult& working = coords[net.layout.SlotOf(i)];
    working.x = known ? net.points[i].x : kNoCoordinate;
    working.y = known ? net.points[i].y : kNoCoordinate;
  }
  return coords;
}

}  // namespace brenu
