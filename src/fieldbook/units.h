// The units in which instruments write, in metres and radians.
#pragma once

#include "core/angles.h"

namespace brenu {

inline constexpr double kFoot = 0.3048;                 // international
inline constexpr double kSurveyFoot = 1200.0 / 3937.0;  // of the United States
inline constexpr double kDegree = kPi / 180.0;
inline constexpr double kGon = kPi / 200.0;
inline constexpr double kMil = kPi / 3200.0;

}  // namespace brenu
