// The ellipsoid of revolution and its radii of curvature.  Lengths in metres, latitudes in radians.
#pragma once

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

struct Ellipsoid {
  double semiMajor;
  double semiMinor;

  double FirstEccentricity() const { return LinearEccentricity() / semiMajor; }   // e
  double SecondEccentricity() const { return LinearEccentricity() / semiMinor; }  // e'

  // W = sqrt(1 - e^2 sin^2 B), the auxiliary quantity of both radii.
  double W(double latitude) const {
    return std::sqrt(1.0 - Square(FirstEccentricity()) * Square(std::sin(latitude)));
  }
  // M = a (1 - e^2) / W^3
  double MeridianRadius(double latitude) const {
    const double w = W(latitude);
    return (1.0 - Square(FirstEccentricity())) * semiMajor / (w * w * w);
  }
  // N = a / W
  double PrimeVerticalRadius(double latitude) const { return semiMajor / W(latitude); }

 private:
  double LinearEccentricity() const { return std::sqrt(Square(semiMajor) - Square(semiMinor)); }
};

}  // namespace brenu
