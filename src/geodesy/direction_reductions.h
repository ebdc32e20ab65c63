// Directions and azimuths reduced from the ground to the ellipsoid.  Angles in radians, lengths in
// metres, corrections in arc-seconds and to be added, unless a comment says otherwise.
#pragma once

#include "geodesy/ellipsoid.h"

namespace brenu {

// The offset of an instrument or of a signal from its mark.
struct Eccentricity {
  double length;
  double angle;  // at the offset point, from the mark clockwise to the zero direction
};

struct CentredSight {
  double distance;
  double direction;
};

// S' = S - (e1 cos t1 + e2 cos t2) + (e1 sin t1 + e2 sin t2) / (2 S), and the direction plus
// e1 sin(direction + t1) / S' + e2 sin(direction + t2) / S'.
CentredSight CentreSight(const Eccentricity& station, const Eccentricity& target,
                         const CentredSight& observed);

// (eta cos A - xi sin A) tan(elevation), in the unit of the components of the deflection.
double DeflectionCorrection(double xi, double eta, double azimuth, double elevation);

// rho e^2 H cos^2 B sin 2A / (2 M)
double TargetHeightCorrection(const Ellipsoid& ellipsoid, double targetHeight, double latitude,
                              double azimuth);

// -rho e'^2 (S / 1000)^2 cos^2 B sin 2A / (12 N): N enters once, the distance in kilometres.
double NormalSectionCorrection(const Ellipsoid& ellipsoid, double distance, double latitude,
                               double azimuth);

// Laplace's equation: A = alpha - (lambda - L) sin B.
double LaplaceAzimuth(double astronomicalAzimuth, double astronomicalLongitude, double latitude,
                      double geodeticLongitude);

}  // namespace brenu
