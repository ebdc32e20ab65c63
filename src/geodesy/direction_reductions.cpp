#include "geodesy/direction_reductions.h"

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

CentredSight CentreSight(const Eccentricity& station, const Eccentricity& target,
                         const CentredSight& observed) {
  const double along =
      station.length * std::cos(station.angle) + target.length * std::cos(target.angle);
  const double across =
      station.length * std::sin(station.angle) + target.length * std::sin(target.angle);
  const double distance = observed.distance - along + across * 0.5 / observed.distance;

  const auto turn = [&](const Eccentricity& offset) {
    return std::sin(observed.direction + offset.angle) *
           (offset.length / distance * kArcSecondsPerRadian);
  };
  return {distance, observed.direction + (turn(station) + turn(target)) * kRadiansPerArcSecond};
}

double DeflectionCorrection(double xi, double eta, double azimuth, double elevation) {
  return (eta * std::cos(azimuth) - xi * std::sin(azimuth)) * std::tan(elevation);
}

double TargetHeightCorrection(const Ellipsoid& ellipsoid, double targetHeight, double latitude,
                              double azimuth) {
  const double e = ellipsoid.FirstEccentricity();
  return std::sin(2.0 * azimuth) *
         (e * e * kArcSecondsPerRadian * targetHeight * Square(std::cos(latitude))) * 0.5 /
         ellipsoid.MeridianRadius(latitude);
}

double NormalSectionCorrection(const Ellipsoid& ellipsoid, double distance, double latitude,
                               double azimuth) {
  const double e = ellipsoid.SecondEccentricity();
  return -std::sin(2.0 * azimuth) *
         (e * e * kArcSecondsPerRadian * Square(0.001 * distance) * Square(std::cos(latitude))) /
         12.0 / ellipsoid.PrimeVerticalRadius(latitude);
}

double LaplaceAzimuth(double astronomicalAzimuth, double astronomicalLongitude, double latitude,
                      double geodeticLongitude) {
  return astronomicalAzimuth - std::sin(latitude) * (astronomicalLongitude - geodeticLongitude);
}

}  // namespace brenu
