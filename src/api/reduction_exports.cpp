// The C interface of the reductions: closed formulas that cannot fail; a and b are the semi-axes.
#include "api/barrier.h"
#include "geodesy/atmosphere.h"
#include "geodesy/curvature.h"
#include "geodesy/direction_reductions.h"
#include "geodesy/distance_reductions.h"
#include "geodesy/gauss_projection.h"

extern "C" {

void CentreCorrect(double e1, double angle1, double e2, double angle2, double* distance,
                   double* direction) {
  if (distance == nullptr || direction == nullptr) return;
  const auto centred = brenu::CentreSight({e1, angle1}, {e2, angle2}, {*distance, *direction});
  *distance = centred.distance;
  *direction = centred.direction;
}
double DovCorrect(double xi, double eta, double azimuth, double elevation) {
  return brenu::DeflectionCorrection(xi, eta, azimuth, elevation);
}
double HeightMarkCorrect(double a, double b, double height, double latitude, double azimuth) {
  return brenu::TargetHeightCorrection({a, b}, height, latitude, azimuth);
}
double SectionCorrect(double a, double b, double distance, double latitude, double azimuth) {
  return brenu::NormalSectionCorrection({a, b}, distance, latitude, azimuth);
}
double DistanceReduction(double h1, double instrument, double h2, double target, double slope,
                         double latitude, double azimuth) {
  return brenu::SlopeToEllipsoid({h1, instrument}, {h2, target}, slope, latitude, azimuth);
}
double AstronomicalAzimuthReduction(double alpha, double lambda, double latitude,
                                    double longitude) {
  return brenu::LaplaceAzimuth(alpha, lambda, latitude, longitude);
}
double DirectionCorrect(double x1, double y1, double x2, double y2, double radius) {
  return brenu::ArcMinusChordDirection({x1, y1}, {x2, y2}, radius);
}
double DistanceCorrect(double y1, double y2, double distance, double radius) {
  return brenu::GridDistanceCorrection(y1, y2, distance, radius);
}
double PlaneAzimuthCorrect(double azimuth, double latitude, double x1, double y1, double x2,
                           double y2, double a, double b, double radius) {
  return brenu::GridAzimuth(azimuth, latitude, {x1, y1}, {x2, y2}, {a, b}, radius);
}
void MeteorologicalCorrect(double p1, double dry1, double wet1, double, double wavelength,
                           double p2, double dry2, double wet2, double, double distance,
                           double* out) {
  if (out == nullptr) return;
  *out = brenu::PsychrometricCorrection({p1, dry1, wet1}, {p2, dry2, wet2}, wavelength, distance);
}
void MeteorologicalCorrect2(double p1, double t1, double a1, double wavelength, double p2,
                            double t2, double a2, double distance, double* out) {
  if (out == nullptr) return;
  *out = brenu::HygrometricCorrection({p1, t1, a1}, {p2, t2, a2}, wavelength, distance);
}
void ConstAddMultiplyCorrect(double constant, double scale, double distance, double* out) {
  if (out != nullptr) *out = brenu::ApplyConstants(constant, scale, distance);
}
void ProjectionCorrect(double h, double undulation, double radius, double lineHeight, double mode,
                       double distance, double* out) {
  if (out == nullptr) return;
  brenu::Deliver(brenu::ProjectDistance(h, undulation, radius, lineHeight, mode, distance), out);
}
void GaussCorrect(double h, double undulation, double radius, double lineHeight, double mode,
                  double distance, double y1, double y2, double meanRadius, double* out,
                  double* grid) {
  if (out == nullptr || grid == nullptr) return;
  ProjectionCorrect(h, undulation, radius, lineHeight, mode, distance, out);
  *grid = brenu::GridDistance(y1, y2, *out, meanRadius);
}
double GetRm(double latitude, double equator, double polar, double e) {
  return brenu::MeanRadius(latitude, equator, polar, e);
}
double GetRn(double, double, double polar, double e, double azimuth) {
  return brenu::NormalSectionRadius(polar, e, azimuth);
}

}  // extern "C"
