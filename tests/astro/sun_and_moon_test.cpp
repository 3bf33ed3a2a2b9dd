#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Raises;

namespace mMoon {

using namespace runtime;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using SunAndMoonTest = support::ModuleTest;

void ComputeAt(double T) {
  Centuries = T;
  SunPosition(0);
  MoonPosition(0);
}

}  // namespace

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 18 and 30, with the departures. JD 2451545.0.
TEST_F(SunAndMoonTest, HaveTheWorkedValuesOf2000) {
  Centuries = 1;
  SunPosition(0);
  EXPECT_NEAR(SunMeanLongitude, 280.465902, 0.5e-6);
  EXPECT_NEAR(SunMeanAnomaly, 357.525427, 0.5e-6);
  EXPECT_NEAR(EarthEccentricity, 0.016709, 0.5e-6);
  EXPECT_NEAR(SunEquationOfCentre, -0.084430, 0.5e-6);
  EXPECT_NEAR(SunTrueLongitude, 280.381472, 0.5e-6);
  EXPECT_NEAR(SunTrueAnomaly, 357.440997, 0.5e-6);
  EXPECT_NEAR(SunApparentLongitude, 280.371861, 0.5e-6);
  EXPECT_NEAR(Obliquity, 23.439280, 0.5e-6);
  EXPECT_NEAR(SunRightAscension, 179.912814, 0.5e-6);
  EXPECT_NEAR(SunDeclination, -0.0001192, 0.5e-7);

  MoonPosition(0);
  EXPECT_NEAR(MoonMeanLongitude, 218.321432, 0.5e-6);
  EXPECT_NEAR(MoonMeanAnomaly, 134.969239, 0.5e-6);
  EXPECT_NEAR(MoonElongation, 445617.857236, 0.5e-6);
  EXPECT_NEAR(MoonArgLatitude, 483213.253381, 0.5e-6);
  EXPECT_NEAR(MoonNodeLongitude, 125.043355, 0.5e-6);
  EXPECT_NEAR(SunMeanAnomaly, 357.523742, 0.5e-6);
  EXPECT_NEAR(MoonLongitude, 223.316561, 0.5e-6);
  EXPECT_NEAR(MoonLatitude, 5.171287, 0.5e-6);
  EXPECT_NEAR(MoonParallax, 0.908159, 0.5e-6);
  EXPECT_NEAR(MoonRightAscension, 180.015961, 0.5e-6);
  EXPECT_NEAR(MoonDeclination, -0.0000576, 0.5e-7);
}

TEST_F(SunAndMoonTest, TheMoonLowersTheSunsAnomalyEachTimeAndDoesNotNormaliseIt) {
  Centuries = 1;
  SunMeanAnomaly = 0.001;
  const double lowering = 0.001778 * std::sin(DegToRad(51.2 + 20.2));
  for (const int times : {1, 2}) {
    MoonPosition(0);
    EXPECT_NEAR(SunMeanAnomaly, 0.001 - times * lowering, 1e-12);
  }
}

// Only far in the past is the polynomial negative, so that normalising changes it.
TEST_F(SunAndMoonTest, TheMoonComputesTheObliquityAgainAndNormalisesIt) {
  Centuries = -400;
  SunPosition(0);
  EXPECT_LT(Obliquity, 0);
  const double raw = Obliquity;
  Obliquity = 0;
  MoonPosition(0);
  EXPECT_NEAR(Obliquity, raw + 360, 1e-9);
}

TEST_F(SunAndMoonTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  ComputeAt(1);
  const double longitude = MoonLongitude;
  const double anomaly = SunMeanAnomaly;
  // Normalising the Moon's mean longitude overflows; by then both anomalies have their new values.
  Centuries = 1e9;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); }));
  EXPECT_GT(MoonMeanLongitude, 1e14);
  EXPECT_GT(MoonMeanAnomaly, 1e14);
  EXPECT_NE(anomaly, SunMeanAnomaly);
  EXPECT_NEAR(MoonLongitude, longitude, 0);

  // Normalising the Sun's mean longitude overflows, and leaves it as it is.
  const double sunAnomaly = SunMeanAnomaly;
  Centuries = 1e60;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { SunPosition(0); }));
  EXPECT_NEAR(SunMeanLongitude, 279.69668 + 36000.76892 * 1e60 + 0.0003025 * std::pow(1e60, 2), 0);
  EXPECT_NEAR(SunMeanAnomaly, sunAnomaly, 0);
}

// Far beyond every calendar the terms of a polynomial are infinite with opposite signs. The first one overflows, before
// their sum becomes a NaN.
TEST_F(SunAndMoonTest, OverflowAtAnImpossibleMoment) {
  for (const double T : {1e103, -1e103, 1e154, -1e154, 1e160, -1e160, 1e300, -1e300, HUGE_VAL}) {
    Centuries = T;
    EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); })) << T;
    EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { SunPosition(0); })) << T;
  }
  Centuries = kNaN;
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { MoonPosition(0); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { SunPosition(0); }));
}

}  // namespace mMoon
