// Measured distances reduced to the ellipsoid or to another surface.  Metres and radians.
#pragma once

#include <optional>

namespace brenu {

struct LineEnd {
  double pointHeight;
  double heightAbovePoint;  // of the instrument or of the target
};

// The slope distance reduced to the ellipsoid, as an arc on a sphere of 6371 km.  The line is
// lowered by the mean height of the two points; a difference of height greater than the slope
// distance gives NaN.
double SlopeToEllipsoid(const LineEnd& station, const LineEnd& target, double slopeDistance,
                        double latitude, double azimuth);

// Additive constant in mm, scale correction in mm/km.
double ApplyConstants(double constant, double scale, double distance);

// Mode 0: to the ellipsoid, S (1 - h/R + h^2/R^2) with h = height + undulation.
// Mode 1: from the height of the line to another, S - S (lineHeight - height) / R.
// Nothing for any other mode.
std::optional<double> ProjectDistance(double height, double undulation, double radius,
                                      double lineHeight, double mode, double distance);

}  // namespace brenu
