#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brenu {

// A row of the traverse table.  What a point does not have (the angle of an end without back
// sight, the side after the last point) is absent: -1 for angles, 0 for lengths and increments.
struct TraversePoint {
  std::string name;
  double angle = -1.0;           // observed, from back sight to fore sight, radians in [0, 2 pi)
  double angleCorrection = 0.0;  // arc-seconds
  double azimuth = -1.0;         // adjusted, to the next point, radians in [0, 2 pi)
  double length = 0.0;           // side to the next point, metres
  double dx = 0.0, dy = 0.0;     // increments of that side from the adjusted azimuth, metres
  double dxCorrection = 0.0, dyCorrection = 0.0;  // metres
  double x = 0.0, y = 0.0;                        // of the point, with the corrections, metres
};

// A computed traverse.
struct Traverse {
  std::vector<TraversePoint> points;   // in order; a closed one ends with its first point again
  std::int32_t angleCount = 0;         // angles that enter the angular misclosure; 0: no check
  double angleMisclosure = 0.0;        // arc-seconds, in (-180, 180] degrees
  double lengthMisclosure = 0.0;       // metres
  double length = 0.0;                 // sum of the sides, metres
  std::int32_t relativePrecision = 0;  // N of 1:N = misclosure : length
};

// A traverse as measured, before its computation.
struct MeasuredTraverse {
  std::vector<std::string> names;  // n points
  std::vector<double> sides;       // n - 1 lengths, metres
  std::vector<double> angles;      // n - 2 angles at the inner points, radians
  // Angle at the first point from a back sight of known azimuth, and at the last point to a fore
  // sight of known azimuth, where they were measured.
  struct Orientation {
    double angle;    // radians
    double azimuth;  // from the end of the traverse to the sight, radians
  };
  std::optional<Orientation> start, end;
  double startX = 0.0, startY = 0.0;  // known coordinates of the first...
  double endX = 0.0, endY = 0.0;      // ...and of the last point, metres
};

// The classical computation: azimuths carried from the start with the angles, each corrected by an
// equal share of the angular misclosure; increments corrected in proportion to the sides, so that
// the last point meets its known position.  Without orientation at either end a provisional
// azimuth is carried and the whole chain turned onto the azimuth from the first to the last point.
// (Kahmen, Vermessungskunde; Ghilani and Wolf, Elementary Surveying.)
Traverse ComputeTraverse(const MeasuredTraverse& measured);

// A closed traverse: the first name stands at the end again, `closingAngle` is the angle at the
// first point from the last side to the first one.  The start azimuth is that of the first side.
// The misclosure counts inner angles, whichever way round the traverse was measured.
Traverse ComputeClosedTraverse(const MeasuredTraverse& measured, double closingAngle,
                               double startAzimuth);

// The angular misclosure brought into (-180, 180] degrees; radians.
double ReduceToHalfCircle(double angle);

// N of 1:N for a misclosure of a length, at most 2147483647 (also where there is no misclosure).
std::int32_t RelativePrecision(double misclosure, double length);

}  // namespace brenu
