#include "fieldbook/distance_steps.h"

#include <cmath>

#include "geodesy/distance_reductions.h"
#include "geodesy/gauss_projection.h"

namespace brenu {

namespace {
constexpr double kEarthRadius = 6371000.0;
}

double CorrectedSlope(double slope, const ReductionOptions& options, const SetLog& log) {
  if (options.air) {
    const AirCorrection& air = *options.air;
    const double corrected =
        slope + HygrometricCorrection(air.air, air.assumed, air.wavelength, slope);
    log.Add(Step::kAtmosphere, slope, corrected);
    slope = corrected;
  }
  if (options.constant != 0.0 || options.scale != 0.0) {
    const double corrected = ApplyConstants(options.constant, options.scale, slope);
    log.Add(Step::kConstants, slope, corrected);
    slope = corrected;
  }
  return slope;
}

double HorizontalOf(double slope, double zenith, const ReductionOptions& options,
                    const SetLog& log) {
  double horizontal = slope * std::sin(zenith);
  log.Add(Step::kHorizontal, slope, horizontal);
  if (!options.refraction) return horizontal;
  const double curved = horizontal - (1.0 - *options.refraction / 2.0) * slope * slope *
                                         std::sin(2.0 * zenith) / (2.0 * kEarthRadius);
  log.Add(Step::kCurvature, horizontal, curved);
  return curved;
}

double HeightOf(double slope, double zenith, const ReductionOptions& options) {
  const double height = slope * std::cos(zenith);
  if (!options.refraction) return height;
  const double horizontal = slope * std::sin(zenith);
  return height + (1.0 - *options.refraction) * horizontal * horizontal / (2.0 * kEarthRadius);
}

double ProjectedDistance(double horizontal, const ReductionOptions& options, const SetLog& log) {
  double distance = horizontal;
  if (options.ellipsoid) {
    const auto lowered = ProjectDistance(options.ellipsoid->height, 0.0, options.ellipsoid->radius,
                                         0.0, 0.0, distance);
    log.Add(Step::kEllipsoid, distance, *lowered);
    distance = *lowered;
  }
  if (options.plane) {
    const PlaneReduction& plane = *options.plane;
    double projected = distance * plane.scale;
    if (plane.easting != 0.0) {
      projected += GridDistanceCorrection(plane.easting, plane.easting, distance, plane.radius);
    }
    log.Add(Step::kProjection, distance, projected);
    distance = projected;
  }
  return distance;
}

}  // namespace brenu
