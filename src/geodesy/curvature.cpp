#include "geodesy/curvature.h"

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

namespace {

double V(double argument, double secondEccentricity) {
  return std::sqrt(Square(std::cos(argument)) * Square(secondEccentricity) + 1.0);
}

}  // namespace

double MeanRadius(double latitudeDegrees, double equatorRadius, double polarRadius,
                  double secondEccentricity) {
  constexpr double kTolerance = 1e-7;
  if (std::fabs(latitudeDegrees) < kTolerance) return equatorRadius;
  if (std::fabs(latitudeDegrees - 90.0) < kTolerance) return polarRadius;
  return polarRadius / Square(V(polarRadius, secondEccentricity));
}

double NormalSectionRadius(double polarRadius, double secondEccentricity, double azimuth) {
  const double v = V(polarRadius, secondEccentricity);
  const double m = polarRadius / (v * v * v);
  const double n = polarRadius / v;
  return n * m / (Square(std::sin(azimuth)) * m + Square(std::cos(azimuth)) * n);
}

}  // namespace brenu
