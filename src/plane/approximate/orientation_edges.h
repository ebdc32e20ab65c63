#pragma once

#include <cstdint>
#include <vector>

#include "plane/approximate/rays.h"

namespace brenu::approximate {

// Nodes of the graph of orientations: the world, whose orientation is 0, and the stations with
// directions.
using Node = Index<struct NodeKind>;
inline constexpr Node kWorld{0};

struct StationNodes {
  explicit StationNodes(const NetworkLayout& layout, const Rays& rays);

  Table<Slot, Node> nodeOf;  // none for what is no station with directions
  Table<Node, Slot> slotOf;  // none for the world
};

// The orientation of the circle of b is that of a plus `turn`.  The orientation of a circle is the
// azimuth of its zero.
struct OrientationEdge {
  Node a, b;
  double turn;   // radians
  double sigma;  // radians
};

// What relates the circles of stations to each other and to the grid: sights from one to the other
// and back, azimuths, sights between control points, and vectors between points that two stations
// have both measured by direction and distance.  Vectors whose lengths or turns contradict those of
// the others are voted out.
std::vector<OrientationEdge> FindOrientationEdges(const PlaneNet& net, const Rays& rays,
                                                  const Accuracy& accuracy,
                                                  const StationNodes& nodes);

}  // namespace brenu::approximate
