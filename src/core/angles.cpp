#include "core/angles.h"

#include <cmath>
#include <limits>

namespace brenu {

namespace {
// Absorbs the representation error of decimal fractions: 30.15 is stored just below 30.15.
constexpr double kGuard = 0.0001;
}  // namespace

std::int32_t TruncateToInt32(double value) {
  constexpr double kLimit = 2147483648.0;
  if (value > -kLimit - 1.0 && value < kLimit) {
    return static_cast<std::int32_t>(value);
  }
  return std::numeric_limits<std::int32_t>::min();
}

double DmsToRad(double dms) {
  const double sign = dms < 0 ? -1.0 : 1.0;
  double rest = std::fabs(dms);
  const double degrees = TruncateToInt32(rest + kGuard);
  rest -= degrees;
  const double minutes = TruncateToInt32(rest * 100.0 + kGuard);
  rest -= minutes / 100.0;
  return sign * (rest * 10000.0 / 3600.0 + (minutes / 60.0 + degrees)) * kPi / 180.0;
}

double RadToDms(double rad) {
  const double sign = rad < 0 ? -1.0 : 1.0;
  double seconds = std::fabs(rad) * 180.0 / kPi * 3600.0;
  const double degrees = TruncateToInt32(seconds / 3600.0 + kGuard);
  seconds -= degrees * 3600.0;
  const double minutes = TruncateToInt32(seconds / 60.0 + kGuard);
  seconds -= minutes * 60.0;
  if (seconds < 0) seconds = 0;
  return sign * (seconds / 10000.0 + (minutes / 100.0 + degrees));
}

double FullCircle(double rad) { return PositiveAngle(std::fmod(rad, kTwoPi)); }

double HalfCircle(double rad) { return std::remainder(rad, kTwoPi); }

double CalcAzimuth(double x1, double y1, double x2, double y2) {
  return PositiveAngle(std::atan2(y2 - y1, x2 - x1));
}

double CalcDistance(double x1, double y1, double x2, double y2) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  return std::sqrt(dx * dx + dy * dy);
}

}  // namespace brenu
