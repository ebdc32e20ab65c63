#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/network_layout.h"
#include "core/records.h"
#include "core/route_search.h"
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
  TraverseFinder(const NetworkLayout& net, const std::vector<PlaneResult>& coords);

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
    std::int32_t from, to;  // slots
    double length;          // metres
  };

  void CollectSides();
  const ObsData* Find(std::int32_t station, std::int32_t target) const;
  bool HasReading(std::int32_t station, std::int32_t target) const;
  bool IsControl(std::int32_t slot) const {
    return m_net.PointOf(slot) >= 0 && m_net.PointOf(slot) < m_net.ControlCount();
  }
  // Of a side between two points.
  double SideLength(std::int32_t a, std::int32_t b) const;
  // From back sight to fore sight, radians in [0, 2 pi).
  double AngleAt(std::int32_t station, std::int32_t back, std::int32_t fore) const;
  std::optional<MeasuredTraverse::Orientation> OrientationAt(std::int32_t station,
                                                             std::int32_t neighbour,
                                                             bool isStart) const;
  MeasuredTraverse Measure(const std::vector<std::int32_t>& chain) const;
  Traverse CloseLoop(std::vector<std::int32_t> loop) const;

  const NetworkLayout& m_net;
  const std::vector<PlaneResult>& m_coords;
  std::vector<Side> m_sides;
};

}  // namespace brenu
