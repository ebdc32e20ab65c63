// Angles and lines in the plane.  Packed sexagesimal angles ("dms") are doubles dd.mmss, X is
// north, Y east, azimuths run clockwise from X.
#pragma once

#include <cstdint>

namespace brenu {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kRho = 206264.80624709636;  // arc-seconds per radian

// Truncates toward zero; what does not fit, NaN included, gives -2147483648.
std::int32_t TruncateToInt32(double value);

// Valid input (minutes and seconds below 60) is never moved by a whole unit.
double DmsToRad(double dms);

// An angle less than 0.36" short of a whole degree, or 0.006" short of a whole minute, is rounded
// up to it, so that the seconds are never negative.
double RadToDms(double rad);

// Brings the result of an atan2, or a difference of two positive angles, into [0, 2 pi).
inline double PositiveAngle(double rad) { return rad < 0.0 ? rad + kTwoPi : rad; }

// The same angle in [0, 2 pi), whatever its size.
double FullCircle(double rad);
// The same angle in [-pi, pi].
double HalfCircle(double rad);

// In [0, 2 pi); 0 for coincident points.
double CalcAzimuth(double x1, double y1, double x2, double y2);
double CalcDistance(double x1, double y1, double x2, double y2);

}  // namespace brenu
