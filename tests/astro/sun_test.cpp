#include <gtest/gtest.h>

#include <cmath>

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

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 18, with the departures. JD 2451545.0.
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

TEST_F(SunPositionTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  ComputeAt(1);
  const double anomaly = SunMeanAnomaly;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { ComputeAt(1e60); }));
  // Normalising failed: the raw longitude stays.
  EXPECT_TRUE(Same(279.69668 + 36000.76892 * 1e60 + 0.0003025 * std::pow(1e60, 2), SunMeanLongitude));
  EXPECT_TRUE(Same(anomaly, SunMeanAnomaly));
}

}  // namespace mMoon
