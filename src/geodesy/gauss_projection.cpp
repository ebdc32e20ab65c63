#include "geodesy/gauss_projection.h"

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

namespace {

// gamma = rho t / N (y - y^3 (1 + t^2 - eta^2 - 2 eta^4) / (3 N^2)
//                      + y^5 (2 + 5 t^2 + 3 t^4) / (15 N^4)), arc-seconds
double Convergence(double t, double eta, double n, double y) {
  const double t2 = Square(t);
  const double eta2 = Square(eta);
  const double y3 = y * y * y;
  const double fifth = (1.0 / 15.0) / Square(Square(n)) * (3.0 * Square(t2) + 5.0 * t2 + 2.0);
  const double third = (t2 + 1.0 - eta2 - 2.0 * Square(eta2)) * ((1.0 / 3.0) / Square(n));
  return (fifth * (y3 * y * y) + y - y3 * third) * (t * kArcSecondsPerRadian / n);
}

// delta = -rho (x2 - x1) (2 y1 + y2 - ym^3 / R^2) / (6 R^2)
//         - rho eta^2 t ym^2 (y2 - y1) / R^3, arc-seconds
double ArcToChord(double t, double eta, const GridPoint& point1, const GridPoint& point2,
                  double radius) {
  const double ym = (point1.y + point2.y) / 2.0;
  const double r2 = Square(radius);
  const double k = -(kArcSecondsPerRadian / 6.0) / r2 * (point2.x - point1.x);
  return (2.0 * point1.y + point2.y - ym * ym * ym / r2) * k -
         Square(eta) * kArcSecondsPerRadian * t / (r2 * radius) * (point2.y - point1.y) *
             Square(ym);
}

}  // namespace

double ArcMinusChordDirection(const GridPoint& point1, const GridPoint& point2, double radius) {
  return (point1.y + point2.y) * kArcSecondsPerRadian * 0.5 * (point2.x - point1.x) * 0.5 / radius /
         radius;
}

double GridDistanceCorrection(double y1, double y2, double distance, double radius) {
  const double ym = (y1 + y2) / 2.0;
  const double r2 = Square(radius);
  return (Square(Square(ym)) / 24.0 / Square(r2) + Square(y1 - y2) / 24.0 / r2 +
          Square(ym) / 2.0 / r2) *
         distance;
}

double GridDistance(double y1, double y2, double distance, double radius) {
  const double ym = (y1 + y2) / 2.0;
  const double r2 = Square(radius);
  return (Square(ym) / (2.0 * r2) + 1.0 + Square(y1 - y2) / (24.0 * r2)) * distance;
}

double GridAzimuth(double azimuth, double latitude, const GridPoint& point1,
                   const GridPoint& point2, const Ellipsoid& ellipsoid, double radius) {
  const double t = std::tan(latitude);
  const double eta = std::cos(latitude) * ellipsoid.SecondEccentricity();
  const double n = ellipsoid.PrimeVerticalRadius(latitude);
  return azimuth - (Convergence(t, eta, n, point1.y) - ArcToChord(t, eta, point1, point2, radius)) *
                       kRadiansPerArcSecond;
}

}  // namespace brenu
