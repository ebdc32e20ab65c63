#include "geodesy/distance_reductions.h"

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

double SlopeToEllipsoid(const LineEnd& station, const LineEnd& target, double slopeDistance,
                        double latitude, double azimuth) {
  constexpr double kEarthRadius = 6.371e6;
  const double rise = (target.pointHeight + target.heightAbovePoint) -
                      (station.pointHeight + station.heightAbovePoint);
  const double horizontal = std::sqrt(Square(slopeDistance) - Square(rise));
  const double lowered =
      kEarthRadius / ((station.pointHeight + target.pointHeight) * 0.5 + kEarthRadius);
  const double arcMinusChord =
      slopeDistance * slopeDistance * slopeDistance / 24.0 / kEarthRadius / kEarthRadius;

  const double heightSum =
      target.pointHeight + target.heightAbovePoint + station.pointHeight + station.heightAbovePoint;
  const double latitudeTerm = std::sin(2.0 * latitude) *
                              (heightSum * 1.2500000000000002e-15 * 0.5 * Square(slopeDistance)) *
                              std::cos(azimuth);
  return horizontal * lowered + arcMinusChord + latitudeTerm;
}

double ApplyConstants(double constant, double scale, double distance) {
  return scale * distance * 0.001 * 0.001 + constant * 0.001 + distance;
}

std::optional<double> ProjectDistance(double height, double undulation, double radius,
                                      double lineHeight, double mode, double distance) {
  if (mode == 0.0) {
    const double h = height + undulation;
    return (Square(h) / Square(radius) + 1.0 - h / radius) * distance;
  }
  if (mode == 1.0) return distance - (lineHeight - height) / radius * distance;
  return std::nullopt;
}

}  // namespace brenu
