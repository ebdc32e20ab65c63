#pragma once

#include <cstdint>
#include <optional>

#include "geodesy/atmosphere.h"

namespace brenu {

// Dry air at sea level.
constexpr HygrometerReading kStandardAir = {1013.25, 15.0, 0.0};

// The air along the lines, and that which the instrument assumed.
struct AirCorrection {
  HygrometerReading air = kStandardAir, assumed = kStandardAir;
  double wavelength = 0.85;  // micrometres
};

struct EllipsoidReduction {
  double height = 0.0;  // mean, above the ellipsoid
  double radius = 6371000.0;
};

// Into the plane of a projection: by its scale, or of the Gauss projection by the distance from the
// central meridian.
struct PlaneReduction {
  double scale = 1.0;
  double easting = 0.0;  // mean, from the central meridian; 0 leaves this part out
  double radius = 6371000.0;
};

// The steps from sights to observations.  Those that a surveyor always wants are on.
struct ReductionOptions {
  bool averageFaces = true;  // off: face 1 alone where there is one
  bool averageSets = true;   // off: the first set alone
  bool joinSetups = true;    // off: the first setup on a station alone
  bool centre = true;        // off: eccentric prisms taken as the points themselves
  bool trigonometricHeights = false;
  std::optional<double> refraction;  // coefficient k; with it goes the curvature of the Earth
  std::optional<AirCorrection> air;
  double constant = 0.0;  // of distances, mm
  double scale = 0.0;     // of distances, mm/km
  std::optional<EllipsoidReduction> ellipsoid;
  std::optional<PlaneReduction> plane;
};

}  // namespace brenu
