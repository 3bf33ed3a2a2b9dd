#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
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

constexpr double kJanuary2003 = 2452640.5;

using FindPhasesTest = support::ModuleTest;

double LunationCount(double year, double jd, double jdJan1) {
  return ((year + (jd - jdJan1) / 365 * 100 / 100) - 1900) * 12.3685;
}

double SunAnomalyOfLunation(double k, double sign) {
  const double T = k / 1236.85;
  return 359.2242 + 29.10535608 * k + sign * 0.0000333 * T * T - 0.00000347 * T * T * T;
}

double MoonAnomalyOfLunation(double k) {
  const double T = k / 1236.85;
  return 306.0253 + 385.81691806 * k + 0.0107306 * T * T + 0.00001236 * T * T * T;
}

/// The Julian day of lunation k; the thirteen terms are written out a second time, as printed.
double InstantOfLunation(double k, double sign) {
  const double T = k / 1236.85;
  const double M = NormalizeAngle(SunAnomalyOfLunation(k, sign));
  const double Mp = NormalizeAngle(MoonAnomalyOfLunation(k));
  const double F = NormalizeAngle(21.2964 + 390.67050646 * k - 0.0016528 * T * T - 0.00000239 * T * T * T);
  const auto sine = [](double degrees) { return std::sin(DegToRad(degrees)); };
  const double mean = 2415020.75933 + 29.53058868 * k + 0.0001178 * T * T - 0.000000155 * T * T * T +
                      0.00033 * sine(166.56 + 132.87 * T - 0.009173 * T * T);
  return mean + (0.1734 - 0.000393 * T) * sine(M) + 0.0021 * sine(2 * M) - 0.4068 * sine(Mp) + 0.0161 * sine(2 * Mp) -
         0.0004 * sine(3 * Mp) + 0.0104 * sine(2 * F) - 0.0051 * sine(M + Mp) - 0.0074 * sine(M - Mp) +
         0.0004 * sine(2 * F + M) - 0.0004 * sine(2 * F - Mp) - 0.0006 * sine(2 * F + Mp) + 0.0010 * sine(2 * F - Mp) +
         0.0005 * sine(M + 2 * Mp);
}

/// Checks the anomalies that the last evaluation left. 1e-9 tells the two signs of the T^2 term apart.
void ExpectLastLunation(double k, double sign) {
  EXPECT_TRUE(NearAngle(SunAnomalyOfLunation(k, sign), SunMeanAnomaly, 1e-9));
  EXPECT_TRUE(NearAngle(MoonAnomalyOfLunation(k), MoonMeanAnomaly, 1e-8));
}

/// The lit fraction; elongation and anomalies in degrees.
double LitFractionFor(double D, double M, double Mp) {
  MoonElongation = D;
  SunMeanAnomaly = M;
  MoonMeanAnomaly = Mp;
  FindPhases(2003, 2452870.5, kJanuary2003);
  return Illumination;
}

}  // namespace

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 32, with the departures. 19 August 2003.
TEST_F(FindPhasesTest, FindsThePhasesAhead) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  EXPECT_TRUE(Prints(63.0137, YearPercent, 4));
  EXPECT_TRUE(Prints(1281.7493, LunationCount(2003, 2452870.5, kJanuary2003), 4));
  EXPECT_TRUE(Prints(2452879.2269, NewMoonJD, 4));
  EXPECT_TRUE(Prints(2452893.1913, FullMoonJD, 4));
  EXPECT_EQ(WaningFlag, 1);
  ExpectLastLunation(1282.5, -1);
}

// Likewise, 29 August 2003: the New Moon of the 27th has passed.
TEST_F(FindPhasesTest, MovesAPassedNewMoonOneLunationOn) {
  FindPhases(2003, 2452880.5, kJanuary2003);
  EXPECT_TRUE(Prints(2452908.6319, NewMoonJD, 4));
  EXPECT_TRUE(Prints(2452893.1913, FullMoonJD, 4));
  EXPECT_EQ(WaningFlag, 0);
  // Evaluated with the opposite sign of the T^2 term.
  ExpectLastLunation(1283, +1);
}

// Likewise, 12 September 2003.
TEST_F(FindPhasesTest, TakesTheNearestLunation) {
  FindPhases(2003, 2452894.5, kJanuary2003);
  EXPECT_TRUE(Prints(1282.5626, LunationCount(2003, 2452894.5, kJanuary2003), 4));
  EXPECT_TRUE(Prints(2452908.6319, NewMoonJD, 4));
  EXPECT_TRUE(Prints(2452922.8113, FullMoonJD, 4));
  EXPECT_EQ(WaningFlag, 1);
}

TEST_F(FindPhasesTest, AnExactHalfUsesTheLowerLunation) {
  const double jd = 2444122.0484092655;
  const double january1979 = 2443874.5;
  ASSERT_TRUE(Same(985.5, LunationCount(1979, jd, january1979)));
  FindPhases(1979, jd, january1979);
  ExpectLastLunation(986, +1);  // 985 has passed and is moved on
  const double after = jd + 1e-6;
  ASSERT_GT(LunationCount(1979, after, january1979), 985.5);
  FindPhases(1979, after, january1979);
  ExpectLastLunation(986.5, -1);
}

// Worked by hand, 15 June 1850: k is -612.83, and its nearest New Moon, -613, was five days ago.
TEST_F(FindPhasesTest, CountsTheLunationsBefore1900Downward) {
  constexpr double kJune15 = 2396923.5;
  constexpr double kJanuary1850 = 2396758.5;
  FindPhases(1850, kJune15, kJanuary1850);
  ExpectLastLunation(-612, +1);
  EXPECT_TRUE(Near(2396948, NewMoonJD, 1));
  EXPECT_TRUE(Near(2396933, FullMoonJD, 1));
}

// 1 January is passed 20 days late. So for 12 September the finder gives the Full Moon of the 10th, which has passed.
TEST_F(FindPhasesTest, LeavesAPassedFullMoonInThePast) {
  const double jd = 2452894.5;
  FindPhases(2003, jd, kJanuary2003 + 20);
  EXPECT_TRUE(Prints(2452893.1913, FullMoonJD, 4));
  EXPECT_LT(FullMoonJD, jd);
  EXPECT_TRUE(Prints(2452908.6319, NewMoonJD, 4));
  EXPECT_EQ(WaningFlag, 0);
  // The Full Moon is evaluated last.
  ExpectLastLunation(1282.5, -1);
}

TEST_F(FindPhasesTest, APhaseExactlyAtTheReferenceDayHasNotPassed) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double newMoon = NewMoonJD;
  const double fullMoon = FullMoonJD;
  FindPhases(2003, newMoon, kJanuary2003);
  EXPECT_TRUE(Same(newMoon, NewMoonJD));
  FindPhases(2003, std::nextafter(newMoon, 3e6), kJanuary2003);
  EXPECT_GT(NewMoonJD, newMoon + 29);

  FindPhases(2003, fullMoon, kJanuary2003 + 20);
  ExpectLastLunation(1283, +1);
  FindPhases(2003, std::nextafter(fullMoon, 3e6), kJanuary2003 + 20);
  ExpectLastLunation(1282.5, -1);
}

// Far from 1900 a wrong digit in any coefficient of the powers of T shows.
TEST_F(FindPhasesTest, InstantsFollowThePrintedFormulaOverTheAges) {
  for (const std::int16_t year : std::initializer_list<std::int16_t>{-25000, -4712, 0, 1700, 1951, 2099, 9999, 25000}) {
    for (int day = 0; day < 360; day += 7) {
      const double january = std::floor(2415020.5 + 365.25 * (year - 1900)) + 0.5;
      const double jd = january + day;
      FindPhases(year, jd, january);
      const double k0 = LunationCount(year, jd, january);
      const double k = k0 - std::floor(k0) > 0.5 ? std::floor(k0) + 1 : std::floor(k0);
      const bool newMoonHasPassed = InstantOfLunation(k, -1) < jd;
      const double newMoon = newMoonHasPassed ? InstantOfLunation(k + 1, +1) : InstantOfLunation(k, -1);
      const double fullMoon = InstantOfLunation(k + 0.5, -1);
      // A few last bits of such a Julian day, and of angles of 100 million degrees.
      const double tolerance = 1e-8;
      EXPECT_TRUE(Near(newMoon, NewMoonJD, tolerance)) << year << ", day " << day;
      EXPECT_TRUE(Near(fullMoon, FullMoonJD, tolerance)) << year << ", day " << day;
    }
  }
}

TEST_F(FindPhasesTest, EveryYearHas365Days) {
  FindPhases(2004, 2453005.5 + 365, 2453005.5);  // 31 December of a leap year
  EXPECT_TRUE(Same(100, YearPercent));
  FindPhases(2003, kJanuary2003, kJanuary2003);
  EXPECT_TRUE(Same(0, YearPercent));
}

// The flag compares the distances from the reference day. Far away both round to the same number: the flag is 0.
TEST_F(FindPhasesTest, EqualDistancesAreNotWaning) {
  FindPhases(2003, 1e25, 1e25);
  EXPECT_TRUE(Same(NewMoonJD - 1e25, FullMoonJD - 1e25));
  EXPECT_EQ(WaningFlag, 0);
}

TEST_F(FindPhasesTest, CountsOnFromAnEarlierYear) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double newMoon = NewMoonJD;
  FindPhases(2002, 2452870.5, kJanuary2003 - 365);
  EXPECT_GT(YearPercent, 100);
  EXPECT_TRUE(Same(newMoon, NewMoonJD));
}

TEST_F(FindPhasesTest, GivesTheLitFraction) {
  EXPECT_TRUE(Near(0, LitFractionFor(0, 0, 0), 1e-15));
  EXPECT_TRUE(Near(1, LitFractionFor(180, 0, 0), 1e-15));
  // A turn more makes no difference.
  EXPECT_TRUE(Near(1, LitFractionFor(180 + 360 * 1234, 0, 0), 1e-15));
}

TEST_F(FindPhasesTest, UsesTheAnomaliesOfTheMomentBeforeItOverwritesThem) {
  MoonElongation = 100;
  SunMeanAnomaly = 40;
  MoonMeanAnomaly = 70;
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double first = Illumination;
  FindPhases(2003, 2452870.5, kJanuary2003);  // now with those of the last lunation
  EXPECT_NE(first, Illumination);
  EXPECT_TRUE(Same(100, MoonElongation));
}

TEST_F(FindPhasesTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double newMoon = NewMoonJD;
  const double fullMoon = FullMoonJD;
  const double anomaly = SunMeanAnomaly;
  MoonElongation = 180;
  SunMeanAnomaly = anomaly;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, 1e12, 0); }));
  EXPECT_GT(Illumination, 0.5);
  EXPECT_TRUE(Same(1e12 / 365 * 100, YearPercent));
  EXPECT_TRUE(Same(newMoon, NewMoonJD));
  EXPECT_TRUE(Same(fullMoon, FullMoonJD));
  EXPECT_TRUE(Same(anomaly, SunMeanAnomaly));
  EXPECT_EQ(WaningFlag, 1);
}

TEST_F(FindPhasesTest, RaisesTheErrorOfAnImpossibleMoment) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  YearPercent = -1;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, kLargest, -kLargest); }));
  EXPECT_TRUE(Same(-1, YearPercent));
  EXPECT_TRUE(Near(0, Illumination, 1e-15));
  MoonElongation = 1e12;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, 2452870.5, kJanuary2003); }));
}

}  // namespace mMoon
