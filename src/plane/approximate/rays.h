// What the sights of a plane network say, in the units of the computation, and how far the methods
// of approximation trust it.
#pragma once

#include <cmath>
#include <limits>

#include "core/angles.h"
#include "plane/coordinates.h"

namespace brenu::approximate {

inline constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

struct Ray {
  double reading;   // radians; not a number when none
  double distance;  // metres, the mean of both ways where these agree; 0 when none
  double azimuth;   // radians, observed at the station; not a number when none

  bool HasReading() const { return !std::isnan(reading); }
  bool HasAzimuth() const { return !std::isnan(azimuth); }
  bool HasDistance() const { return distance > 0.0; }
  bool IsPolar() const { return HasReading() && HasDistance(); }
};

// Which observations take part.
struct Selection {
  bool directions = true;  // false for networks of distances only; azimuths go with them
};

using Rays = Table<SightNo, Ray>;

// Sights to names without a point say nothing, nor do values that are no finite numbers.
Rays MakeRays(const PlaneNet& net, const Selection& selection);

// A-priori errors within bounds that keep the methods sensible whatever the parameters are.
struct Accuracy {
  explicit Accuracy(const AdjParam& param);

  double Distance(double length) const;  // metres
  double direction;                      // radians

 private:
  double m_constant, m_proportional;
};

inline double AngleOf(const Position& v) { return std::atan2(v.y, v.x); }
inline double LengthOf(const Position& v) { return std::hypot(v.x, v.y); }
inline Position operator+(const Position& a, const Position& b) { return {a.x + b.x, a.y + b.y}; }
inline Position operator-(const Position& a, const Position& b) { return {a.x - b.x, a.y - b.y}; }
inline Position operator*(double s, const Position& a) { return {s * a.x, s * a.y}; }
inline Position Polar(double length, double azimuth) {
  return {length * std::cos(azimuth), length * std::sin(azimuth)};
}
inline double Dot(const Position& a, const Position& b) { return a.x * b.x + a.y * b.y; }
inline double Cross(const Position& a, const Position& b) { return a.x * b.y - a.y * b.x; }

}  // namespace brenu::approximate
