#include "reductions.h"

#include <limits>

#include "geodesy/atmosphere.h"
#include "geodesy/curvature.h"
#include "geodesy/direction_reductions.h"
#include "geodesy/distance_reductions.h"
#include "geodesy/gauss_projection.h"

namespace brenu::tool {

namespace {

using Arguments = std::span<const double>;
using Values = std::vector<double>;

// A mode other than 0 and 1 has no value.
double Projected(Arguments a) {
  return ProjectDistance(a[0], a[1], a[2], a[3], a[4], a[5])
      .value_or(std::numeric_limits<double>::quiet_NaN());
}

// docs/reductions.md has them with their sources and worked examples.
const Reduction kReductions[] = {
    {"CentreCorrect", "Centring: distance and direction from instrument and signal to the marks.",
     "S' = S - (e1 cos t1 + e2 cos t2) + (e1 sin t1 + e2 sin t2) / (2 S); r' = r + e1 sin(r + t1) "
     "/ S' + e2 sin(r + t2) / S'",
     "E1:m T1:dms E2:m T2:dms S:m R:dms", "distance:m direction:dms",
     [](Arguments a) {
       const auto centred = CentreSight({a[0], a[1]}, {a[2], a[3]}, {a[4], a[5]});
       return Values{centred.distance, centred.direction};
     }},
    {"DovCorrect", "Correction of a direction for the deflection of the vertical.",
     "(eta cos A - xi sin A) tan(elevation)", "XI:arc-seconds ETA:arc-seconds A:dms ELEVATION:dms",
     "correction:arc-seconds",
     [](Arguments a) { return Values{DeflectionCorrection(a[0], a[1], a[2], a[3])}; }},
    {"HeightMarkCorrect", "Correction of a direction for the height of the target.",
     "rho e^2 H cos^2 B sin 2A / (2 M)", "SEMIMAJOR:m SEMIMINOR:m H:m B:dms A:dms",
     "correction:arc-seconds",
     [](Arguments a) {
       return Values{TargetHeightCorrection({a[0], a[1]}, a[2], a[3], a[4])};
     }},
    {"SectionCorrect", "Correction of a direction from the normal section to the geodesic.",
     "-rho e'^2 (S / 1000)^2 cos^2 B sin 2A / (12 N)", "SEMIMAJOR:m SEMIMINOR:m S:m B:dms A:dms",
     "correction:arc-seconds",
     [](Arguments a) {
       return Values{NormalSectionCorrection({a[0], a[1]}, a[2], a[3], a[4])};
     }},
    {"DistanceReduction", "Slope distance to the ellipsoid.",
     "sqrt(S^2 - dH^2) R / (R + (H1 + H2) / 2) + S^3 / (24 R^2) + 1.25e-15 Hm S^2 sin 2B cos A, R "
     "= "
     "6371 km, dH and Hm with the heights I of the instrument and T of the target",
     "H1:m I:m H2:m T:m S:m B:dms A:dms", "distance:m",
     [](Arguments a) {
       return Values{SlopeToEllipsoid({a[0], a[1]}, {a[2], a[3]}, a[4], a[5], a[6])};
     }},
    {"AstronomicalAzimuthReduction", "Geodetic from astronomical azimuth, Laplace's equation.",
     "alpha - (lambda - L) sin B", "ALPHA:dms LAMBDA:dms B:dms L:dms", "azimuth:dms",
     [](Arguments a) { return Values{LaplaceAzimuth(a[0], a[1], a[2], a[3])}; }},
    {"DirectionCorrect", "Arc-to-chord correction T - t, to be subtracted from the direction at 1.",
     "rho ym (x2 - x1) / (2 R^2), ym = (y1 + y2) / 2", "X1:m Y1:m X2:m Y2:m R:m",
     "correction:arc-seconds",
     [](Arguments a) {
       return Values{ArcMinusChordDirection({a[0], a[1]}, {a[2], a[3]}, a[4])};
     }},
    {"DistanceCorrect", "Correction of a distance on the ellipsoid to the grid.",
     "S (ym^2 / (2 R^2) + (y1 - y2)^2 / (24 R^2) + ym^4 / (24 R^4))", "Y1:m Y2:m S:m R:m",
     "correction:m",
     [](Arguments a) { return Values{GridDistanceCorrection(a[0], a[1], a[2], a[3])}; }},
    {"PlaneAzimuthCorrect", "Grid azimuth from geodetic azimuth.",
     "A - gamma + delta: convergence of meridians and arc-to-chord correction at point 1",
     "A:dms B:dms X1:m Y1:m X2:m Y2:m SEMIMAJOR:m SEMIMINOR:m R:m", "azimuth:dms",
     [](Arguments a) {
       return Values{GridAzimuth(a[0], a[1], {a[2], a[3]}, {a[4], a[5]}, {a[6], a[7]}, a[8])};
     }},
    {"MeteorologicalCorrect",
     "Difference of Q times distance, by the psychrometer; no correction "
     "in metres, use MeteorologicalCorrect2 for one.",
     "(Q2 - Q1) S", "P1:hPa DRY1:C WET1:C WAVELENGTH:um P2:hPa DRY2:C WET2:C S:m", "difference:m",
     [](Arguments a) {
       return Values{PsychrometricCorrection({a[0], a[1], a[2]}, {a[4], a[5], a[6]}, a[3], a[7])};
     }},
    {"MeteorologicalCorrect2",
     "First velocity correction: 1 the air along the line, 2 that which "
     "the instrument assumed.",
     "(n2 - n1) S, n = 1 + G p / (760 k) - 5.5e-8 e / k",
     "P1:hPa T1:C A1:g/m3 WAVELENGTH:um P2:hPa T2:C A2:g/m3 S:m", "correction:m",
     [](Arguments a) {
       return Values{HygrometricCorrection({a[0], a[1], a[2]}, {a[4], a[5], a[6]}, a[3], a[7])};
     }},
    {"ConstAddMultiplyCorrect", "Additive constant and scale of a distance.",
     "S + C / 1000 + K S / 10^6", "C:mm K:mm/km S:m", "distance:m",
     [](Arguments a) { return Values{ApplyConstants(a[0], a[1], a[2])}; }},
    {"ProjectionCorrect", "Horizontal distance at another height.",
     "mode 0, to the ellipsoid: S (1 - h / R + h^2 / R^2), h = H + UNDULATION; mode 1, from "
     "LINEHEIGHT to H: S - S (LINEHEIGHT - H) / R",
     "H:m UNDULATION:m R:m LINEHEIGHT:m MODE:0or1 S:m", "distance:m",
     [](Arguments a) { return Values{Projected(a)}; }},
    {"GaussCorrect", "As ProjectionCorrect, then to the grid of the Gauss projection.",
     "grid distance = projected (1 + ym^2 / (2 Rm^2) + (y1 - y2)^2 / (24 Rm^2))",
     "H:m UNDULATION:m R:m LINEHEIGHT:m MODE:0or1 S:m Y1:m Y2:m RM:m", "projected:m grid:m",
     [](Arguments a) {
       const double projected = Projected(a);
       return Values{projected, GridDistance(a[6], a[7], projected, a[8])};
     }},
    {"GetRm", "Mean radius of curvature; see docs/reductions.md on its argument.",
     "C / V^2, V = sqrt(1 + E2^2 cos^2 C); EQUATOR and C at latitude 0 and 90",
     "LATITUDE:degrees EQUATOR:m C:m E2:1", "radius:m",
     [](Arguments a) { return Values{MeanRadius(a[0], a[1], a[2], a[3])}; }},
    {"GetRn", "Radius of curvature of a normal section; see docs/reductions.md on its argument.",
     "M N / (M sin^2 A + N cos^2 A), M = C / V^3, N = C / V", "C:m E2:1 A:dms", "radius:m",
     [](Arguments a) { return Values{NormalSectionRadius(a[0], a[1], a[2])}; }},
};

}  // namespace

std::span<const Reduction> Reductions() { return kReductions; }

}  // namespace brenu::tool
