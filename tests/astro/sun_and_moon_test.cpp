#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Near;
using support::Prints;
using support::Raises;
using support::Same;

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
  EXPECT_TRUE(Prints(280.465902, SunMeanLongitude, 6));
  EXPECT_TRUE(Prints(357.525427, SunMeanAnomaly, 6));
  EXPECT_TRUE(Prints(0.016709, EarthEccentricity, 6));
  EXPECT_TRUE(Prints(-0.084430, SunEquationOfCentre, 6));
  EXPECT_TRUE(Prints(280.381472, SunTrueLongitude, 6));
  EXPECT_TRUE(Prints(357.440997, SunTrueAnomaly, 6));
  EXPECT_TRUE(Prints(280.371861, SunApparentLongitude, 6));
  EXPECT_TRUE(Prints(23.439280, Obliquity, 6));
  EXPECT_TRUE(Prints(179.912814, SunRightAscension, 6));
  EXPECT_TRUE(Prints(-0.0001192, SunDeclination, 7));

  MoonPosition(0);
  EXPECT_TRUE(Prints(218.321432, MoonMeanLongitude, 6));
  EXPECT_TRUE(Prints(134.969239, MoonMeanAnomaly, 6));
  EXPECT_TRUE(Prints(445617.857236, MoonElongation, 6));
  EXPECT_TRUE(Prints(483213.253381, MoonArgLatitude, 6));
  EXPECT_TRUE(Prints(125.043355, MoonNodeLongitude, 6));
  EXPECT_TRUE(Prints(357.523742, SunMeanAnomaly, 6));
  EXPECT_TRUE(Prints(223.316561, MoonLongitude, 6));
  EXPECT_TRUE(Prints(5.171287, MoonLatitude, 6));
  EXPECT_TRUE(Prints(0.908159, MoonParallax, 6));
  EXPECT_TRUE(Prints(180.015961, MoonRightAscension, 6));
  EXPECT_TRUE(Prints(-0.0000576, MoonDeclination, 7));
}

TEST_F(SunAndMoonTest, TheMoonLowersTheSunsAnomalyEachTimeAndDoesNotNormaliseIt) {
  Centuries = 1;
  SunMeanAnomaly = 0.001;
  const double lowering = 0.001778 * std::sin(DegToRad(51.2 + 20.2));
  for (const int times : {1, 2}) {
    MoonPosition(0);
    EXPECT_TRUE(Near(0.001 - times * lowering, SunMeanAnomaly, 1e-12));
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
  EXPECT_TRUE(Near(raw + 360, Obliquity, 1e-9));
}

TEST_F(SunAndMoonTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  ComputeAt(1);
  const double longitude = MoonLongitude;
  const double anomaly = SunMeanAnomaly;
  // Normalising the Moon's mean longitude overflows, after the steps before it.
  Centuries = 1e9;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); }));
  EXPECT_GT(MoonMeanLongitude, 1e14);
  EXPECT_GT(MoonMeanAnomaly, 1e14);
  EXPECT_NE(anomaly, SunMeanAnomaly);
  EXPECT_TRUE(Same(longitude, MoonLongitude));

  // Normalising the Sun's mean longitude overflows, and leaves it as it is.
  const double sunAnomaly = SunMeanAnomaly;
  Centuries = 1e60;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { SunPosition(0); }));
  EXPECT_TRUE(Same(279.69668 + 36000.76892 * 1e60 + 0.0003025 * std::pow(1e60, 2), SunMeanLongitude));
  EXPECT_TRUE(Same(sunAnomaly, SunMeanAnomaly));
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
