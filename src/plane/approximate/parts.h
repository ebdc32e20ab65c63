#pragma once

#include <cstdint>
#include <vector>

#include "plane/approximate/growth.h"
#include "plane/approximate/orientations.h"
#include "plane/approximate/settling.h"

namespace brenu::approximate {

// A part of the network that has a shape of its own: where its points are and how its stations are
// oriented, in a system that is not yet that of the grid.
struct Part {
  struct Point {
    Slot slot;
    Position place;
  };
  struct Station {
    Slot slot;
    double orientation;  // radians
  };
  std::vector<Point> points;
  std::vector<Station> stations;
  bool isScaleless = false;  // known but for its size
  bool mayMirror = false;    // known but for its sense
};

// Finds the parts; one object for all of them, since its tables are as large as the network.
class PartFinder {
 public:
  PartFinder(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy);

  // Of stations whose circles are turned against each other as known, two at least.
  Part FromStations(const std::vector<Slot>& stations, const std::vector<double>& orientations);
  // Around a point by distances alone; empty when it has no triangle to begin with.
  Part FromDistances(Slot point);

 private:
  // Whether a place to begin was found; tells whether the part has no scale.
  bool Begin(const std::vector<Slot>& stations, bool& isScaleless);
  bool BeginTriangle(Slot point);
  Part Taken();

  const NetworkLayout& m_net;
  const Rays& m_rays;
  Places m_places;
  Growth m_growth;
  Settling m_settling;
  Table<Slot, std::int32_t> m_marks;
  std::int32_t m_mark = 0;
};

}  // namespace brenu::approximate
