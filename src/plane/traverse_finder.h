#pragma once

#include <optional>
#include <vector>

#include "core/route_search.h"
#include "plane/coordinates.h"
#include "plane/traverse.h"

namespace brenu {

// Finds the traverses of a plane network.
//
// A side is a pair of points with a distance between them in either direction (the mean of both);
// a traverse runs over sides, and at each of its angles there are direction readings to both
// neighbours.
class TraverseFinder {
 public:
  // Both must outlive the finder; coordinates by slot, approximate ones for new points.
  TraverseFinder(const NetworkLayout& net, const Coordinates& coords);

  // Whether all points with sides have coordinates.
  bool AllSidesReached() const;

  // For every pair of control points the shortest chain through new points only, at least one.
  // Oriented at an end where there is a reading to another control point (the first in name order)
  // beside that along the chain.
  std::vector<MeasuredTraverse> ConnectingTraverses() const;

  // Loops of three sides and more with all angles, each side starting one at most, computed.  A
  // loop starts at a control point where it has one, otherwise at the point at which it was found.
  std::vector<Traverse> ClosedTraverses() const;

 private:
  struct Side {
    Slot from, to;
    double length;  // metres
  };

  void CollectSides();
  bool HasReading(Slot station, Slot target) const;
  bool IsControl(Slot slot) const { return m_net.IsControl(m_net.PointOf(slot)); }
  // Of a side between two points.
  double SideLength(Slot a, Slot b) const;
  // From back sight to fore sight, radians in [0, 2 pi).
  double AngleAt(Slot station, Slot back, Slot fore) const;
  std::optional<MeasuredTraverse::Orientation> OrientationAt(Slot station, Slot neighbour,
                                                             bool isStart) const;
  MeasuredTraverse Measure(const std::vector<Slot>& chain) const;
  Traverse CloseLoop(std::vector<Slot> loop) const;

  const NetworkLayout& m_net;
  const Coordinates& m_coords;
  std::vector<Side> m_sides;
};

}  // namespace brenu
