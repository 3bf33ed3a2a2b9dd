#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Near;
using support::NearAngle;
using support::Prints;
using support::Raises;
using support::Same;

namespace mMoon {

using namespace runtime;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double SinDegrees(double degrees) { return std::sin(DegToRad(degrees)); }

class MoonPositionTest : public support::ModuleTest {
 protected:
  static void ComputeAt(double T) {
    Centuries = T;
    SunPosition(0);
    MoonPosition(0);
  }
};

}  // namespace

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 30, with the departures. JD 2451545.0.
TEST_F(MoonPositionTest, GivesTheWorkedValuesOf2000) {
  Centuries = 1;
  SunPosition(0);
  EXPECT_TRUE(Prints(357.525427, SunMeanAnomaly, 6));
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

// Likewise, JD 2415020.0.
TEST_F(MoonPositionTest, GivesTheWorkedValuesOf1900) {
  ComputeAt(0);
  const double additive = 0.000233 * SinDegrees(51.2) + 0.003964 * std::sin(6.0486) + 0.001964 * SinDegrees(259.183275);
  EXPECT_TRUE(Prints(270.434164 + additive, MoonMeanLongitude, 6));
  EXPECT_TRUE(Prints(350.74, MoonElongation, 2));
  EXPECT_TRUE(Near(11.25, MoonArgLatitude, 0.03));
  EXPECT_TRUE(Same(259.183275, MoonNodeLongitude));
  EXPECT_TRUE(Prints(265.299461, MoonLongitude, 6));
  EXPECT_TRUE(Prints(0.460935, MoonLatitude, 6));
  EXPECT_TRUE(Prints(0.986380, MoonParallax, 6));
  EXPECT_TRUE(Prints(0.192979, MoonRightAscension, 6));
  EXPECT_TRUE(Prints(-0.0001186, MoonDeclination, 7));
}

TEST_F(MoonPositionTest, NeverReadsItsArgument) {
  ComputeAt(1);
  const double declination = MoonDeclination;
  SunPosition(kNaN);
  MoonPosition(kNaN);
  EXPECT_TRUE(Same(declination, MoonDeclination));
}

TEST_F(MoonPositionTest, LeavesElongationAndArgumentOfLatitudeUnreduced) {
  ComputeAt(1.2);
  EXPECT_GT(MoonElongation, 500000);
  EXPECT_GT(MoonArgLatitude, 500000);
  ComputeAt(-1);
  EXPECT_LT(MoonElongation, -400000);
  EXPECT_LT(MoonArgLatitude, -400000);
}

TEST_F(MoonPositionTest, NormalisesLongitudeAnomalyAndNode) {
  for (int i = 0; i < 3636; ++i) {
    const double T = -1 + 0.0011 * i;
    ComputeAt(T);
    for (const double angle :
         {MoonMeanLongitude, MoonMeanAnomaly, MoonNodeLongitude, MoonLongitude, Obliquity, MoonRightAscension}) {
      EXPECT_TRUE(angle >= 0 && angle <= 360) << T;
    }
  }
}

TEST_F(MoonPositionTest, LowersTheSunsAnomalyEachTimeItIsCalled) {
  Centuries = 1.25;
  SunPosition(0);
  const double before = SunMeanAnomaly;
  const double lowering = 0.001778 * SinDegrees(51.2 + 20.2 * 1.25);
  MoonPosition(0);
  EXPECT_TRUE(Near(before - lowering, SunMeanAnomaly, 1e-12));
  MoonPosition(0);
  EXPECT_TRUE(Near(before - 2 * lowering, SunMeanAnomaly, 1e-12));
}

TEST_F(MoonPositionTest, DoesNotNormaliseTheSunsAnomalyAgain) {
  Centuries = 1;
  SunMeanAnomaly = 0.001;
  MoonPosition(0);
  EXPECT_LT(SunMeanAnomaly, 0);
  EXPECT_TRUE(Near(0.001 - 0.001778 * SinDegrees(71.4), SunMeanAnomaly, 1e-12));
}

// Only far in the past is the polynomial negative, so that normalising changes it.
TEST_F(MoonPositionTest, NormalisesTheObliquity) {
  Centuries = -400;
  SunPosition(0);
  EXPECT_LT(Obliquity, 0);
  const double raw = Obliquity;
  MoonPosition(0);
  EXPECT_TRUE(NearAngle(raw, Obliquity, 1e-9));
  EXPECT_GT(Obliquity, 300);
}

TEST_F(MoonPositionTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  ComputeAt(1);
  const double longitude = MoonLongitude;
  const double anomaly = SunMeanAnomaly;
  // Normalising the mean longitude overflows, after the steps before it.
  Centuries = 1e9;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); }));
  EXPECT_GT(MoonMeanLongitude, 1e14);
  EXPECT_GT(MoonMeanAnomaly, 1e14);
  EXPECT_NE(anomaly, SunMeanAnomaly);
  EXPECT_TRUE(Same(longitude, MoonLongitude));
}

TEST_F(MoonPositionTest, RaisesTheErrorOfAnImpossibleMoment) {
  Centuries = 1e200;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); }));
  Centuries = kNaN;
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { MoonPosition(0); }));
}

// Far beyond every calendar the terms of a polynomial are infinite with opposite signs. The first one overflows, before
// their sum becomes a NaN.
TEST(MoonPosition, OverflowsIfTermsAreInfiniteWithOppositeSigns) {
  for (const double T : {1e103, -1e103, 1e154, -1e154, 1e160, -1e160, 1e300, -1e300}) {
    Centuries = T;
    SunMeanAnomaly = 0;
    EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { MoonPosition(0); })) << T;
    EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { SunPosition(0); })) << T;
  }
}

}  // namespace mMoon
