#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/raises.h"

using support::Raises;

namespace mMoon {

using namespace runtime;

constexpr double kTenDecimalPi = 3.1415926535;

TEST(NormalizeAngle, KeepsBothEndsOfTheTurn) {
  EXPECT_EQ(NormalizeAngle(360), 360);
  EXPECT_EQ(NormalizeAngle(0), 0);
  EXPECT_TRUE(std::signbit(NormalizeAngle(-0.0)));  // untouched
  EXPECT_EQ(NormalizeAngle(123.456), 123.456);
}

TEST(NormalizeAngle, BringsAnglesIntoTheTurn) {
  EXPECT_EQ(NormalizeAngle(720.5), 0.5);
  EXPECT_EQ(NormalizeAngle(-0.25), 359.75);
  EXPECT_NEAR(NormalizeAngle(-540.25), 179.75, 1e-12);
  EXPECT_NEAR(NormalizeAngle(std::nextafter(360, 361)), 0, 1e-12);
  EXPECT_NEAR(NormalizeAngle(-std::numeric_limits<double>::denorm_min()), 360, 1e-12);
}

// The whole degrees are divided by 360 and multiplied again. Subtracting turns would leave no rounding. (EXPECT_NEAR
// with 0 compares as EXPECT_EQ does, but prints every digit.)
TEST(NormalizeAngle, CarriesTheRoundingOfTheDivision) {
  const double n = 485047;
  const double q = n / 360;
  const double want = (q - std::floor(q)) * 360 + 0.25;
  EXPECT_NEAR(NormalizeAngle(n + 0.25), want, 0);
  EXPECT_NE(want, 127.25);
  EXPECT_NEAR(NormalizeAngle(n + 0.25), 127.25, 1e-9);
}

TEST(NormalizeAngle, OverflowsWhenTheWholeDegreesLeave32Bits) {
  EXPECT_NEAR(NormalizeAngle(2147483647.0), 127, 1e-6);
  EXPECT_NEAR(NormalizeAngle(2147483647.5) - 0.5, 127, 1e-6);
  EXPECT_NEAR(NormalizeAngle(-2147483648.0), 232, 1e-6);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(2147483648.0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(-2147483648.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(1e300); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(std::numeric_limits<double>::infinity()); }));
}

// The two halves are added before the multiplication: any other order changes the last bits.
TEST(DegToRad, AddsTwoQuotientsAndUsesAPiOfTenDecimals) {
  for (int i = -1000; i <= 1000; ++i) {
    const double angle = 485.0471 * i;
    EXPECT_NEAR(DegToRad(angle), (angle / 360 + angle / 360) * kTenDecimalPi, 0);
  }
}

TEST(ArcSine, PassesTheTangentThroughTheDegreeConversion) {
  EXPECT_EQ(ArcSine(0), 0);
  EXPECT_NEAR(ArcSine(0.5), 0.0100763, 0.5e-7);
  for (const double x : {-0.999, -0.5, -0.01, 0.01, 0.25, 0.5, 0.75, 0.999}) {
    EXPECT_NEAR(ArcSine(x), std::atan(std::tan(std::asin(x)) * kTenDecimalPi / 180), 1e-13);
  }
}

TEST(ArcSine, RaisesItsErrorsFromOneOn) {
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { ArcSine(1); }));
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { ArcSine(-1); }));
  EXPECT_NO_THROW(ArcSine(std::nextafter(1, 0)));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { ArcSine(std::nextafter(1, 2)); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { ArcSine(-2); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { ArcSine(1e200); }));
}

}  // namespace mMoon
