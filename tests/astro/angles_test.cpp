#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/raises.h"

using support::Near;
using support::Raises;
using support::Same;

namespace mMoon {

using namespace runtime;

constexpr double kTenDecimalPi = 3.1415926535;

TEST(NormalizeAngle, KeepsBothEndsOfTheTurn) {
  EXPECT_TRUE(Same(360, NormalizeAngle(360)));
  EXPECT_TRUE(Same(0, NormalizeAngle(0)));
  EXPECT_TRUE(std::signbit(NormalizeAngle(-0.0)));  // untouched
  EXPECT_TRUE(Same(123.456, NormalizeAngle(123.456)));
}

TEST(NormalizeAngle, BringsAnglesIntoTheTurn) {
  EXPECT_TRUE(Same(0.5, NormalizeAngle(720.5)));
  EXPECT_TRUE(Same(359.75, NormalizeAngle(-0.25)));
  EXPECT_TRUE(Near(179.75, NormalizeAngle(-540.25), 1e-12));
  EXPECT_TRUE(Near(0, NormalizeAngle(std::nextafter(360, 361)), 1e-12));
  EXPECT_TRUE(Near(360, NormalizeAngle(-std::numeric_limits<double>::denorm_min()), 1e-12));
}

// The whole degrees are divided by 360 and multiplied again. Subtracting turns would leave no rounding.
TEST(NormalizeAngle, CarriesTheRoundingOfTheDivision) {
  const double n = 485047;
  const double q = n / 360;
  const double want = (q - std::floor(q)) * 360 + 0.25;
  EXPECT_TRUE(Same(want, NormalizeAngle(n + 0.25)));
  EXPECT_NE(want, 127.25);
  EXPECT_TRUE(Near(127.25, NormalizeAngle(n + 0.25), 1e-9));
}

TEST(NormalizeAngle, OverflowsWhenTheWholeDegreesLeave32Bits) {
  EXPECT_TRUE(Near(127, NormalizeAngle(2147483647.0), 1e-6));
  EXPECT_TRUE(Near(127, NormalizeAngle(2147483647.5) - 0.5, 1e-6));
  EXPECT_TRUE(Near(232, NormalizeAngle(-2147483648.0), 1e-6));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(2147483648.0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(-2147483648.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(1e300); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { NormalizeAngle(std::numeric_limits<double>::infinity()); }));
}

TEST(DegToRad, UsesAPiOfTenDecimals) {
  EXPECT_TRUE(Same(kTenDecimalPi, DegToRad(180)));
  EXPECT_TRUE(Same(0, DegToRad(0)));
  EXPECT_TRUE(Same(-kTenDecimalPi / 2, DegToRad(-90)));
}

// The two halves are added before the multiplication: any other order changes the last bits.
TEST(DegToRad, RoundsAsTheSumOfTwoQuotients) {
  int otherLastBits = 0;
  for (int i = 1; i <= 1000; ++i) {
    const double angle = 485.0471 * i;
    EXPECT_TRUE(Same((angle / 360 + angle / 360) * kTenDecimalPi, DegToRad(angle)));
    otherLastBits += DegToRad(angle) != angle * (kTenDecimalPi / 180) ? 1 : 0;
  }
  EXPECT_GT(otherLastBits, 0);
}

TEST(ArcSine, PassesTheTangentThroughTheDegreeConversion) {
  EXPECT_TRUE(Same(0, ArcSine(0)));
  EXPECT_TRUE(Near(0.0100763, ArcSine(0.5), 0.5e-7));
  for (const double x : {-0.999, -0.5, -0.01, 0.01, 0.25, 0.5, 0.75, 0.999}) {
    EXPECT_TRUE(Near(std::atan(std::tan(std::asin(x)) * kTenDecimalPi / 180), ArcSine(x), 1e-13));
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
