#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Prints;
using support::Raises;
using support::Same;

namespace mMoon {

using namespace runtime;

namespace {

class SunPositionTest : public support::ModuleTest {
 protected:
  static void ComputeAt(double T) {
    Centuries = T;
    SunPosition(0);
  }
};

}  // namespace

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 18, with the departures. JD 2415020.0.
TEST_F(SunPositionTest, GivesTheWorkedValuesOf1900) {
  ComputeAt(0);
  EXPECT_TRUE(Same(279.69668, SunMeanLongitude));
  EXPECT_TRUE(Same(358.47583, SunMeanAnomaly));
  EXPECT_TRUE(Same(0.01675104, EarthEccentricity));
  EXPECT_TRUE(Same(23.452294, Obliquity));
  EXPECT_TRUE(Prints(-0.052147, SunEquationOfCentre, 6));
  EXPECT_TRUE(Prints(279.644533, SunTrueLongitude, 6));
  EXPECT_TRUE(Prints(358.423683, SunTrueAnomaly, 6));
  EXPECT_TRUE(Prints(279.643548, SunApparentLongitude, 6));
  EXPECT_TRUE(Prints(179.906057, SunRightAscension, 6));
  EXPECT_TRUE(Prints(-0.0001195, SunDeclination, 7));
}

// Likewise, JD 2451545.0.
TEST_F(SunPositionTest, GivesTheWorkedValuesOf2000) {
  ComputeAt(1);
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
}

TEST_F(SunPositionTest, NeverReadsItsArgument) {
  ComputeAt(1);
  const double declination = SunDeclination;
  SunPosition(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(Same(declination, SunDeclination));
}

TEST_F(SunPositionTest, BringsLongitudeAndAnomalyIntoTheTurnBefore1900) {
  for (int i = 0; i < 333; ++i) {
    const double T = -1.0 + 0.003 * i;
    ComputeAt(T);
    EXPECT_TRUE(SunMeanLongitude >= 0 && SunMeanLongitude <= 360) << T;
    EXPECT_TRUE(SunMeanAnomaly >= 0 && SunMeanAnomaly <= 360) << T;
  }
}

TEST_F(SunPositionTest, LeavesTrueLongitudeAndTrueAnomalyBeyondTheTurn) {
  bool longitudeBeyond = false;
  bool anomalyBelow = false;
  for (int day = 0; day < 366; ++day) {
    ComputeAt(1.2 + day / 36525.0);
    EXPECT_TRUE(Same(SunMeanLongitude + SunEquationOfCentre, SunTrueLongitude));
    EXPECT_TRUE(Same(SunMeanAnomaly + SunEquationOfCentre, SunTrueAnomaly));
    longitudeBeyond = longitudeBeyond || SunTrueLongitude > 360;
    anomalyBelow = anomalyBelow || SunTrueAnomaly < 0 || SunTrueAnomaly > 360;
  }
  EXPECT_TRUE(longitudeBeyond);
  EXPECT_FALSE(anomalyBelow) << "at the end of the turn the equation of the centre is negative";
}

TEST_F(SunPositionTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  ComputeAt(1);
  const double anomaly = SunMeanAnomaly;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { ComputeAt(1e60); }));
  // Normalising failed: the raw longitude stays.
  EXPECT_TRUE(Same(279.69668 + 36000.76892 * 1e60 + 0.0003025 * std::pow(1e60, 2), SunMeanLongitude));
  EXPECT_TRUE(Same(anomaly, SunMeanAnomaly));
}

TEST_F(SunPositionTest, RaisesTheErrorOfAnImpossibleMoment) {
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { ComputeAt(1e200); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { ComputeAt(std::numeric_limits<double>::infinity()); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { ComputeAt(std::numeric_limits<double>::quiet_NaN()); }));
}

}  // namespace mMoon
