// A longitude whose cosine is exactly 0. The cosine of a double never is, so the linker's --wrap=cos sends every call
// of cos to the one in this file, which returns 0 for one chosen argument.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

namespace {

double argumentOfZero = std::numeric_limits<double>::quiet_NaN();

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names
extern "C" double __real_cos(double radians);
extern "C" double __wrap_cos(double radians);
extern "C" double __wrap_cos(double radians) { return radians == argumentOfZero ? 0 : __real_cos(radians); }
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

using support::Raises;
using support::Same;

namespace mMoon {

using namespace runtime;

namespace {

class ZeroCosineTest : public support::ModuleTest {
 protected:
  ~ZeroCosineTest() override { argumentOfZero = std::numeric_limits<double>::quiet_NaN(); }
};

}  // namespace

TEST_F(ZeroCosineTest, OfTheSunsTrueLongitudeIsADivisionByZero) {
  Centuries = 1;
  SunPosition(0);
  const double longitude = SunTrueLongitude;
  const double obliquity = Obliquity;
  support::ResetModule();

  argumentOfZero = DegToRad(longitude);
  Centuries = 1;
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { SunPosition(0); }));
  EXPECT_TRUE(Same(longitude, SunTrueLongitude));
  EXPECT_TRUE(Same(obliquity, Obliquity));
  EXPECT_TRUE(Same(0, SunRightAscension));
  EXPECT_TRUE(Same(0, SunDeclination));
}

TEST_F(ZeroCosineTest, OfTheMoonsLongitudeIsADivisionByZero) {
  Centuries = 1;
  SunPosition(0);
  MoonPosition(0);
  const double longitude = MoonLongitude;
  const double latitude = MoonLatitude;
  const double parallax = MoonParallax;
  support::ResetModule();
  Centuries = 1;
  SunPosition(0);
  Obliquity = 0;

  argumentOfZero = DegToRad(longitude);
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { MoonPosition(0); }));
  EXPECT_TRUE(Same(longitude, MoonLongitude));
  EXPECT_TRUE(Same(latitude, MoonLatitude));
  EXPECT_TRUE(Same(parallax, MoonParallax));
  EXPECT_GT(Obliquity, 23);
  EXPECT_TRUE(Same(0, MoonRightAscension));
  EXPECT_TRUE(Same(0, MoonDeclination));
}

}  // namespace mMoon
