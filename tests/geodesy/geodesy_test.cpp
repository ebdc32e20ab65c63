// The reductions.  Values worked out by hand stand with their steps in docs/reductions.md; others
// come from exact geometry on the sphere or on the ellipsoid.
#include <gtest/gtest.h>

#include <cmath>

#include "brenu/brenu.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kArcSeconds = 180.0 * 3600.0 / kPi;  // in a radian
constexpr double kA = 6378137.0;                      // GRS 80
constexpr double kB = 6356752.3141;
constexpr double kSphere = 6371000.0;

constexpr double Deg(double degrees) { return degrees * kPi / 180.0; }

TEST(Centring, AgreesWithTheTriangleOfTheMarks) {
  // The instrument at (0, 0), the target sighted at (1000, 0); the marks lie 60 and 30 degrees
  // counter-clockwise of the line, as seen from the offset points.
  double distance = 1000.0;
  double direction = 0.0;
  CentreCorrect(0.3, Deg(60), 0.2, Deg(30), &distance, &direction);
  EXPECT_NEAR(distance, 999.676974823, 1e-9);
  const double along = 1000.0 - 0.3 * std::cos(Deg(60)) - 0.2 * std::cos(Deg(30));
  const double across = 0.3 * std::sin(Deg(60)) + 0.2 * std::sin(Deg(30));
  EXPECT_NEAR(direction, std::atan2(across, along), 1e-10);

  // With a reading of 20 degrees the sines of 80 and 50 count; the distance comes out the same.
  distance = 1000.0;
  direction = Deg(20);
  CentreCorrect(0.3, Deg(60), 0.2, Deg(30), &distance, &direction);
  EXPECT_NEAR(distance, 999.676974823, 1e-9);
  EXPECT_NEAR(direction, Deg(20) + 92.5708585550 / kArcSeconds, 1e-13);
}

TEST(Directions, ReducedToTheEllipsoid) {
  EXPECT_NEAR(DovCorrect(5.0, -3.0, Deg(30), Deg(2)), -0.178028744, 1e-9);
  EXPECT_NEAR(DovCorrect(5.0, -3.0, Deg(90), Deg(45)), -5.0, 1e-14);
  EXPECT_NEAR(DovCorrect(5.0, -3.0, 0.0, Deg(45)), -3.0, 1e-14);
  EXPECT_NEAR(HeightMarkCorrect(kA, kB, 2000.0, Deg(30), Deg(45)), 0.163053025, 1e-9);
  // On the equator e^2 / M is (a^2 - b^2) / (a b^2).
  EXPECT_NEAR(HeightMarkCorrect(5e6, 4e6, 1600.0, 0.0, Deg(135)), -9e-5 * kArcSeconds, 1e-12);
  EXPECT_NEAR(SectionCorrect(kA, kB, 30000.0, Deg(30), Deg(45)), -0.0122494776, 1e-10);
  // e^2 S^2 cos^2 B sin 2A / (12 N^2) is 0.00190608776": this is N e'^2 / (10^6 e^2) times as much.
  const double factor = 6.38348091773 * kA * kA / (kB * kB);
  EXPECT_NEAR(SectionCorrect(kA, kB, 30000.0, Deg(30), Deg(135)), 0.00190608776 * factor, 1e-10);
  // The astronomical longitude is 10" east of the geodetic one; sin 30 deg is one half.
  const double east10 = Deg(114) + 10.0 / kArcSeconds;
  EXPECT_NEAR(AstronomicalAzimuthReduction(Deg(60), east10, Deg(30), Deg(114)),
              Deg(60) - 5.0 / kArcSeconds, 1e-14);
}

TEST(SlopeDistance, WorkedExampleAndSphereAtTheEquator) {
  EXPECT_NEAR(DistanceReduction(100.0, 1.6, 1500.0, 1.6, 5000.0, Deg(45), Deg(60)), 4799.397485391,
              1e-9);
  EXPECT_TRUE(std::isnan(DistanceReduction(0.0, 0.0, 200.0, 0.0, 100.0, 0.0, 0.0)));
  const double slope = 10000.0;
  const double r1 = kSphere + 1600.0;
  const double r2 = kSphere + 1700.0;
  // Half-angle form of the law of cosines, which keeps its digits for small angles.
  const double half = std::sqrt((slope - (r2 - r1)) * (slope + (r2 - r1)) / (4.0 * r1 * r2));
  EXPECT_NEAR(DistanceReduction(1600.0, 0.0, 1700.0, 0.0, slope, 0.0, 0.0),
              2.0 * kSphere * std::asin(half), 2e-6);
}

// The Gauss scale is applied to what the first output holds.
TEST(Distances, ConstantsAndProjectionModes) {
  double projected = 0.0;
  ConstAddMultiplyCorrect(5.0, 3.0, 1500.0, &projected);
  EXPECT_NEAR(projected, 1500.0095, 1e-12);
  ProjectionCorrect(1580.0, 20.0, 6.4e6, 900.0, 0.0, 1000.0, &projected);
  EXPECT_NEAR(projected, 999.7500625, 1e-12);  // h / R = 1 / 4000
  ProjectionCorrect(100.0, 20.0, 6.4e6, 900.0, 1.0, 1000.0, &projected);
  EXPECT_NEAR(projected, 999.875, 1e-12);  // 800 m lower: 1 / 8000 shorter
  ProjectionCorrect(100.0, 20.0, 6.4e6, 900.0, 2.0, 1000.0, &projected);
  EXPECT_NEAR(projected, 999.875, 1e-12);  // as it was

  // ym = 64 km: ym^2 / 2R^2 is 5e-5; dy = 8 km: dy^2 / 24R^2 is 6.51e-8.
  const double scale = 1.0 + 5e-5 + 1.0 / 15360000.0;
  for (const double mode : {1.0, 2.0}) {
    projected = 500.0;
    const double expected = mode == 1.0 ? 999.875 : 500.0;
    double grid = 0.0;
    GaussCorrect(100, 20, 6.4e6, 900, mode, 1000, 60000, 68000, 6.4e6, &projected, &grid);
    EXPECT_NEAR(projected, expected, 1e-12);
    EXPECT_NEAR(grid, expected * scale, 1e-12);
  }
}

TEST(GaussProjection, WorkedExamples) {
  EXPECT_NEAR(DirectionCorrect(0.0, 100000.0, 10000.0, 104000.0, kSphere), 2.5916723724, 1e-10);
  EXPECT_NEAR(DistanceCorrect(100000.0, 104000.0, 10000.0, kSphere), 1.281799408, 1e-9);
  EXPECT_NEAR(
      PlaneAzimuthCorrect(Deg(40), Deg(30), 0.0, 100000.0, 10000.0, 104000.0, kA, kB, kSphere),
      0.689075758663, 1e-12);
}

// Against the line on the sphere between the points with these Gauss coordinates.
TEST(GaussProjection, PlaneAndSphereAgree) {
  const auto latitude = [](double x, double y) {
    return std::asin(std::sin(x / kSphere) / std::cosh(y / kSphere));
  };
  const auto longitude = [](double x, double y) {
    return std::atan2(std::sinh(y / kSphere), std::cos(x / kSphere));
  };
  const double lines[][4] = {
      {4e6, 1e5, 4010000, 104000}, {4e6, -1e5, 3990000, -80000}, {-4e6, 60000, -4015000, 70000}};
  for (const auto& [x1, y1, x2, y2] : lines) {
    const double lat1 = latitude(x1, y1);
    const double lat2 = latitude(x2, y2);
    const double dl = longitude(x2, y2) - longitude(x1, y1);
    const double azimuth = std::atan2(
        std::cos(lat2) * std::sin(dl),
        std::cos(lat1) * std::sin(lat2) - std::sin(lat1) * std::cos(lat2) * std::cos(dl));
    const double haversine = std::pow(std::sin((lat2 - lat1) / 2), 2) +
                             std::cos(lat1) * std::cos(lat2) * std::pow(std::sin(dl / 2), 2);
    const double length = 2.0 * kSphere * std::asin(std::sqrt(haversine));
    const double grid =
        PlaneAzimuthCorrect(azimuth, x1 / kSphere, x1, y1, x2, y2, kSphere, kSphere, kSphere);
    const double chord = std::atan2(y2 - y1, x2 - x1);
    EXPECT_NEAR(std::remainder(grid - chord, 2 * kPi) * kArcSeconds, 0.0, 1e-5);
    EXPECT_NEAR(DistanceCorrect(y1, y2, length, kSphere), std::hypot(x2 - x1, y2 - y1) - length,
                5e-6);
  }
}

TEST(Atmosphere, DispersionIsScaledByTenToTheTenth) {
  // At 0 degrees and 760 torr against a vacuum: G - 1 = (0.68 + 48.8664 + 2876.04) 1e10 + 1 - 7
  // - 1.
  double correction = 0.0;
  MeteorologicalCorrect(0.0, 0.0, 0.0, 1.0, 1.0, 760.0 * 1.333222, 0.0, 0.0, 2.0, 1.0, &correction);
  EXPECT_NEAR(correction, 29255863999993.0, 0.05);
}

TEST(Atmosphere, BranchesOfTheVapourPressure) {
  // Without pressure the correction is (e1/k1 - e2/k2) 5.5e-8 S, k = 1 + t / 273.16.
  constexpr double kWavelength = 2.5;
  constexpr double kIce = 6.107;  // wet bulb at 0 degrees
  const double cases[][4] = {
      {20.0, kIce, 5.0, kIce},
      {-12.0, -1.02351, -14.0, -1.21169},  // both quadratic
      {20.0, kIce, -12.0, kWavelength},    // the first end rules the second
      {5.0, kIce, 60.0, 9.37401},          // likewise: quadratic at 60 degrees
      {-10.0, -0.82989, 50.0, 7.50831},    // the limits themselves are outside
      {-15.0, kWavelength, -10.0, kWavelength},
      {60.0, kWavelength, 10.0, kIce},
  };
  for (const auto& [dry1, e1, dry2, e2] : cases) {
    double correction = 0.0;
    MeteorologicalCorrect(0, dry1, 0, 0, kWavelength, 0, dry2, 0, 0, 1.0 / 5.5e-8, &correction);
    EXPECT_NEAR(correction, e1 / (1.0 + dry1 / 273.16) - e2 / (1.0 + dry2 / 273.16), 1e-7)
        << dry1 << " and " << dry2;
  }
}

TEST(Atmosphere, PsychrometerTerms) {
  double correction = 0.0;
  // 6.107 * 10^(75 / 247.3) = 12.2773120408 at a wet bulb of 10 degrees
  MeteorologicalCorrect(0.0, 0.0, 10.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0 / 5.5e-8, &correction);
  EXPECT_NEAR(correction, 12.2773120408 - 6.107, 1e-7);
  // The term with the pressure shows beside the huge Q only for an absurd wet temperature t' of
  // -1e12: e = 1e12 * 0.000662 * 0.001146 * 1e12 * p, to a part in 1e9.
  MeteorologicalCorrect(1.0, 0.0, -1e12, 0.0, 1.0, 1.0, 0.0, 0.0, 0.0, 1.0, &correction);
  EXPECT_NEAR(correction / (7.58652e17 * 5.5e-8), 1.0, 2e-9);
}

TEST(Atmosphere, AbsoluteHumidityGivesTheDifferenceOfTheIndices) {
  double correction = 0.0;
  MeteorologicalCorrect2(950.0, 25.0, 10.0, 0.85, 1013.25, 15.0, 0.0, 2000.0, &correction);
  EXPECT_NEAR(correction, 0.053449786, 1e-9);
}

// cos^2 of pi is 1 and V = 2 for e' = sqrt 3: M = pi / 8, N = pi / 2.  The latitude only picks
// equator and pole.
TEST(Curvature, MeanAndEulersFormula) {
  const double e = std::sqrt(3.0);
  EXPECT_EQ(GetRm(1e-8, 7.0, kPi, e), 7.0);
  EXPECT_EQ(GetRm(90.00000001, 7.0, kPi, e), kPi);
  for (const double latitude : {2e-7, 45.0, -90.0}) {
    EXPECT_NEAR(GetRm(latitude, 7.0, kPi, e), kPi / 4, 1e-14) << latitude;
  }
  EXPECT_NEAR(GetRm(30.0, kA, 6399593.6259, std::sqrt(0.00673949678826)), 6359470.8067, 1e-4);
  EXPECT_NEAR(GetRn(30.0, 7.0, kPi, e, 0.0), kPi / 8, 1e-14);
  EXPECT_NEAR(GetRn(30.0, 7.0, kPi, e, Deg(90)), kPi / 2, 1e-14);
  EXPECT_NEAR(GetRn(80.0, 9.0, kPi, e, Deg(45)), kPi / 5, 1e-14);
  EXPECT_NEAR(GetRn(30.0, kA, 6399593.6259, std::sqrt(0.00673949678826), Deg(30)), 6349455.9477,
              1e-4);
}

TEST(Reductions, NullOutputsAreLeftAlone) {
  double kept = 1.0;
  CentreCorrect(1.0, 1.0, 1.0, 1.0, &kept, nullptr);
  CentreCorrect(1.0, 1.0, 1.0, 1.0, nullptr, &kept);
  MeteorologicalCorrect(1, 1, 1, 1, 1, 1, 1, 1, 1, 1, nullptr);
  MeteorologicalCorrect2(1, 1, 1, 1, 1, 1, 1, 1, nullptr);
  ConstAddMultiplyCorrect(1.0, 1.0, 1.0, nullptr);
  ProjectionCorrect(1.0, 1.0, 1.0, 1.0, 0.0, 1.0, nullptr);
  GaussCorrect(1, 1, 1, 1, 0, 5, 1, 1, 1, &kept, nullptr);
  GaussCorrect(1, 1, 1, 1, 0, 5, 1, 1, 1, nullptr, &kept);
  EXPECT_EQ(kept, 1.0);
}

}  // namespace
