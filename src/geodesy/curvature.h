// Radii of curvature from c, the polar radius of curvature, and e', the second eccentricity, by way
// of V = sqrt(1 + e'^2 cos^2 u).  The argument u of the cosine is the number c itself, taken as
// radians, and not a latitude.
#pragma once

namespace brenu {

// c / V^2.  At the equator and at the poles, within 1e-7 degrees of latitude 0 and +90, the given
// radii instead.
double MeanRadius(double latitudeDegrees, double equatorRadius, double polarRadius,
                  double secondEccentricity);

// Euler's formula M N / (M sin^2 A + N cos^2 A) with M = c / V^3 and N = c / V.
double NormalSectionRadius(double polarRadius, double secondEccentricity, double azimuth);

}  // namespace brenu
