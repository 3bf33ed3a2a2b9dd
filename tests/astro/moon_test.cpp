#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::AngleDifference;
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
double CosDegrees(double degrees) { return std::cos(DegToRad(degrees)); }

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

// The T^2 part is subtracted after the conversion, so its 0.0091731 are radians.
TEST_F(MoonPositionTest, VenusTermTakesItsSquareInRadians) {
  ComputeAt(1);
  const double node = 259.183275 - 1934.142 + 0.002078 + 0.0000022;
  const auto longitudeWith = [&](double venusArgument) {
    return 270.434164 + 481267.8831 - 0.001133 + 0.0000019 + 0.000233 * SinDegrees(71.4) +
           0.003964 * std::sin(venusArgument) + 0.001964 * SinDegrees(node);
  };
  EXPECT_TRUE(NearAngle(longitudeWith(DegToRad(479.43) - 0.0091731), MoonMeanLongitude, 1e-9));
  EXPECT_GT(std::fabs(AngleDifference(longitudeWith(DegToRad(479.43 - 0.0091731)), MoonMeanLongitude)), 1e-6);
}

// The polynomials and additive terms are written out here a second time.
TEST_F(MoonPositionTest, FundamentalArgumentsGetTheirAdditiveTerms) {
  for (const double T : {-1.0, -0.37, 0.0, 0.83, 1.2688, 2.99}) {
    const double T2 = T * T;
    const double T3 = T2 * T;
    const double a = SinDegrees(51.2 + 20.2 * T);
    const double venus = 0.003964 * std::sin(DegToRad(346.56 + 132.87 * T) - 0.0091731 * T2);
    const double node = 259.183275 - 1934.142 * T + 0.002078 * T2 + 0.0000022 * T3;
    const double sinNode = SinDegrees(node);
    ComputeAt(T);
    EXPECT_TRUE(NearAngle(
        270.434164 + 481267.8831 * T - 0.001133 * T2 + 0.0000019 * T3 + 0.000233 * a + venus + 0.001964 * sinNode,
        MoonMeanLongitude, 2e-9));
    EXPECT_TRUE(NearAngle(
        296.104608 + 477198.8491 * T + 0.009192 * T2 + 0.0000144 * T3 + 0.000817 * a + venus + 0.002541 * sinNode,
        MoonMeanAnomaly, 2e-9));
    EXPECT_TRUE(
        Near(350.737486 + 445267.1142 * T - 0.001436 * T2 + 0.0000019 * T3 + 0.002011 * a + venus + 0.001964 * sinNode,
             MoonElongation, 2e-9));
    EXPECT_TRUE(Near(11.250889 + 483202.0251 * T - 0.003211 * T2 - 0.0000003 * T3 + venus - 0.024691 * sinNode -
                         0.004328 * SinDegrees(node + 275.05 - 2.3 * T),
                     MoonArgLatitude, 2e-9));
    EXPECT_TRUE(NearAngle(node, MoonNodeLongitude, 1e-10));
  }
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

TEST_F(MoonPositionTest, ObliquityIsTheSunsAgain) {
  for (const double T : {-1.0, 0.0, 1.0, 3.0}) {
    Centuries = T;
    SunPosition(0);
    const double fromTheSun = Obliquity;
    Obliquity = 0;
    MoonPosition(0);
    EXPECT_TRUE(Same(fromTheSun, Obliquity));
  }
}

// Far in the past the polynomial is negative: only there does normalising show.
TEST_F(MoonPositionTest, NormalisesTheObliquity) {
  Centuries = -400;
  SunPosition(0);
  EXPECT_LT(Obliquity, 0);
  const double raw = Obliquity;
  MoonPosition(0);
  EXPECT_TRUE(NearAngle(raw, Obliquity, 1e-9));
  EXPECT_GT(Obliquity, 300);
}

TEST_F(MoonPositionTest, RightAscensionConvertsTheWholeRatio) {
  int with180 = 0;
  int againstTheQuadrant = 0;
  for (int i = 0; i < 333; ++i) {
    const double T = 1 + 0.00003 * i;
    ComputeAt(T);
    const double ratio =
        (SinDegrees(MoonLongitude) * CosDegrees(Obliquity) - std::tan(DegToRad(MoonLatitude)) * SinDegrees(Obliquity)) /
        CosDegrees(MoonLongitude);
    const bool negative = std::cos(MoonLongitude) < 0;
    EXPECT_TRUE(Same(NormalizeAngle(std::atan(DegToRad(ratio)) + (negative ? 180 : 0)), MoonRightAscension));
    with180 += negative ? 1 : 0;
    againstTheQuadrant += negative != (CosDegrees(MoonLongitude) < 0) ? 1 : 0;
  }
  EXPECT_GT(with180, 100);
  EXPECT_GT(againstTheQuadrant, 100);
}

TEST_F(MoonPositionTest, DeclinationConvertsItsSineOnceMore) {
  for (int i = 0; i < 33; ++i) {
    const double T = 1 + 0.0003 * i;
    ComputeAt(T);
    const double sine = SinDegrees(Obliquity) * CosDegrees(MoonLatitude) * SinDegrees(MoonLongitude) +
                        CosDegrees(Obliquity) * SinDegrees(MoonLatitude);
    EXPECT_TRUE(Same(ArcSine(DegToRad(sine)), MoonDeclination));
    EXPECT_LT(std::fabs(MoonDeclination), 0.0004);
  }
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
