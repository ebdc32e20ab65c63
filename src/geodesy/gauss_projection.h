// Observations reduced from the ellipsoid to the plane of the Gauss conformal projection.  x north,
// y east of the central meridian without false easting and scale 1 there; metres and radians.
#pragma once

#include "geodesy/ellipsoid.h"

namespace brenu {

struct GridPoint {
  double x;
  double y;
};

// rho ym (x2 - x1) / (2 R^2), arc-seconds: what the projected geodesic's direction at point 1
// exceeds that of the chord by.
double ArcMinusChordDirection(const GridPoint& point1, const GridPoint& point2, double radius);

// S (ym^4 / (24 R^4) + dy^2 / (24 R^2) + ym^2 / (2 R^2)), to be added.
double GridDistanceCorrection(double y1, double y2, double distance, double radius);

// S (1 + ym^2 / (2 R^2) + dy^2 / (24 R^2))
double GridDistance(double y1, double y2, double distance, double radius);

// Azimuth minus the convergence of meridians at point 1 plus the arc-to-chord correction.
double GridAzimuth(double azimuth, double latitude, const GridPoint& point1,
                   const GridPoint& point2, const Ellipsoid& ellipsoid, double radius);

}  // namespace brenu
