#include "core/angles.h"

#include <gtest/gtest.h>

#include <limits>

namespace brenu {
namespace {

TEST(Angles, DmsToRadReadsDegreesMinutesAndSeconds) {
  EXPECT_DOUBLE_EQ(DmsToRad(45.0), kPi / 4);
  // 30 deg 15' 20.5" = 108920.5"
  EXPECT_NEAR(DmsToRad(30.15205), 108920.5 / kRho, 1e-14);
  EXPECT_EQ(DmsToRad(-30.3), -DmsToRad(30.3));
  EXPECT_EQ(DmsToRad(0.0), 0.0);
}

TEST(Angles, RepresentationErrorMovesNoWholeUnit) {
  // 30.15 is stored below 30.15: must not become 30 deg 14' 99.99".
  EXPECT_NEAR(DmsToRad(30.15), 30.25 * kPi / 180, 1e-14);
  EXPECT_NEAR(RadToDms(DmsToRad(30.15)), 30.15, 1e-12);
  for (int minutes = 0; minutes < 60; ++minutes) {
    const double dms = 7.0 + minutes / 100.0;
    EXPECT_NEAR(DmsToRad(dms), (7.0 + minutes / 60.0) * kPi / 180, 1e-13) << dms;
    EXPECT_NEAR(RadToDms(DmsToRad(dms)), dms, 1e-11);
  }
}

TEST(Angles, RadToDmsRoundsUpJustBelowAWholeUnit) {
  EXPECT_EQ(RadToDms(DmsToRad(12.59597)), 13.0);              // 0.3" short of a degree
  EXPECT_NEAR(RadToDms(DmsToRad(12.59595)), 12.59595, 1e-9);  // 0.5" short is kept
  EXPECT_EQ(RadToDms(DmsToRad(12.29599955)), 12.3);           // 0.0045" short of a minute
  EXPECT_NEAR(RadToDms(DmsToRad(12.2959990)), 12.2959990, 1e-9);
}

TEST(Angles, AzimuthRunsClockwiseFromNorth) {
  EXPECT_EQ(CalcAzimuth(0, 0, 1, 0), 0.0);
  EXPECT_DOUBLE_EQ(CalcAzimuth(0, 0, 0, 1), kPi / 2);
  EXPECT_DOUBLE_EQ(CalcAzimuth(0, 0, -1, 0), kPi);
  EXPECT_DOUBLE_EQ(CalcAzimuth(0, 0, 0, -1), 3 * kPi / 2);
  EXPECT_EQ(CalcAzimuth(5, 5, 5, 5), 0.0);
  EXPECT_DOUBLE_EQ(CalcDistance(1, 2, 4, 6), 5.0);
}

TEST(Angles, TruncationOfWhatDoesNotFit) {
  constexpr auto kIndefinite = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(TruncateToInt32(-2.9), -2);
  EXPECT_EQ(TruncateToInt32(2147483647.9), 2147483647);
  EXPECT_EQ(TruncateToInt32(2147483648.0), kIndefinite);
  EXPECT_EQ(TruncateToInt32(std::numeric_limits<double>::infinity()), kIndefinite);
  EXPECT_EQ(TruncateToInt32(std::numeric_limits<double>::quiet_NaN()), kIndefinite);
}

}  // namespace
}  // namespace brenu
