// Arc-seconds and squares, for the formulas of this room.
#pragma once

namespace brenu {

inline constexpr double kArcSecondsPerRadian = 206264.80624709636;
inline constexpr double kRadiansPerArcSecond = 4.84813681109536e-6;

inline double Square(double value) { return value * value; }

}  // namespace brenu
