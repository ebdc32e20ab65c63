// Where a point may lie, from what connects it with points that are placed.
#pragma once

#include <optional>
#include <vector>

#include "plane/approximate/rays.h"

namespace brenu::approximate {

// What was measured between a point and a placed one.
struct Measure {
  Position from;           // of the placed point
  double bearing = kNone;  // azimuth from there to the point, radians; not a number when unknown
  double reading = kNone;  // at the point, whose circle is not oriented, towards the placed point
  double distance = 0.0;   // metres; 0 when none

  bool HasBearing() const { return !std::isnan(bearing); }
  bool HasReading() const { return !std::isnan(reading); }
  bool HasDistance() const { return distance > 0.0; }
};

struct Candidate {
  Position place;
  double orientation = kNone;  // of the point's own circle, where readings take part
  double cost = 0.0;           // 0 when all measures agree, at most 1 for each that does not
  int redundancy = 0;          // measures that agree beyond those that place the point
};

// The candidate with which the measures agree best; nothing when they do not place the point, or
// leave open which of two places it is.  With `hint`, roughly known coordinates, they decide that.
std::optional<Candidate> BestCandidate(const std::vector<Measure>& measures,
                                       const Accuracy& accuracy,
                                       const std::optional<Position>& hint);

// How far apart a measure and a place may be to agree, metres.
double Tolerance(double length, const Accuracy& accuracy);

// The orientation that most of the angles (azimuth minus reading) agree on; `lengths` beside them
// tell how much an angle matters.
double CommonOrientation(const std::vector<double>& angles, const std::vector<double>& lengths,
                         const Accuracy& accuracy);

}  // namespace brenu::approximate
