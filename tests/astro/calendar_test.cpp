#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "astro/mMoon.h"
#include "runtime/number_format.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Near;
using support::Raises;
using support::Same;

namespace mMoon {

using namespace runtime;

namespace {

using JulianToCivilTest = support::ModuleTest;

double JulianDay(int year, int month, double day) {
  auto y = static_cast<std::int16_t>(year);
  auto m = static_cast<std::int16_t>(month);
  return CivilToJulian(y, m, day);
}

void ExpectCivil(int year, int month, int day, int hour, int minute) {
  EXPECT_TRUE(Same(year, CalYear));
  EXPECT_TRUE(Same(month, CalMonth));
  EXPECT_TRUE(Same(day, CalDay));
  EXPECT_EQ(CalHour, hour);
  EXPECT_EQ(CalMinute, minute);
}

/// 19 August 2003, 0 h.
constexpr double kMidnight = 2452870.5;

}  // namespace

TEST(DayFraction, AddsTheTimeOfDayToTheDay) {
  EXPECT_TRUE(Same(19.5, DayFraction(19, 12, 0)));
  EXPECT_TRUE(Same(1, DayFraction(1, 0, 0)));
  EXPECT_TRUE(Same(31 + 1439.0 / 1440, DayFraction(31, 23, 59)));
  EXPECT_TRUE(Same(5 - 1.0 / 1440, DayFraction(5, 0, -1)));
}

TEST(DayFraction, OverflowsWhenTheMinutesLeave16Bits) {
  EXPECT_TRUE(Same(32767.0 / 1440, DayFraction(0, 546, 7)));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, 546, 8); }));
  EXPECT_TRUE(Same(-32768.0 / 1440, DayFraction(0, -546, -8)));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, -546, -9); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, 547, -60); }));
}

// Meeus, Astronomical Formulae for Calculators, ch. 3, and the almanac.
TEST(CivilToJulian, GivesTheJulianDay) {
  EXPECT_TRUE(Same(2452871.0, JulianDay(2003, 8, 19.5)));
  EXPECT_TRUE(Same(2451545.0, JulianDay(2000, 1, 1.5)));
  EXPECT_TRUE(Same(2415020.5, JulianDay(1900, 1, 1)));
  EXPECT_TRUE(Same(2436116.31, JulianDay(1957, 10, 4.81)));
  EXPECT_TRUE(Same(JulianDay(0, 3, 1) - 150 * 365 - 37, JulianDay(-150, 3, 1)));   // with 37 leap days
  EXPECT_TRUE(Same(JulianDay(2000, 1, 1) - 15 * 146097, JulianDay(-4000, 1, 1)));  // the calendar repeats itself
}

TEST(CivilToJulian, ChangesJanuaryAndFebruaryInTheCallersVariables) {
  using Months = std::vector<std::pair<std::int16_t, std::int16_t>>;
  Months months = {{2000, 1}, {2004, 2}, {2004, 3}};
  for (auto& [year, month] : months) {
    CivilToJulian(year, month, 1);
  }
  EXPECT_EQ(months, (Months{{1999, 13}, {2003, 14}, {2004, 3}}));
}

// The month is not checked: each one beyond 14 adds another 30.6001 days.
TEST(CivilToJulian, CountsOnBeyondTheLastMonth) { EXPECT_TRUE(Same(3430715.5, JulianDay(2000, 32000, 1))); }

TEST(CivilToJulian, OverflowsWhenTheYearLeaves16BitsAndChangesNothing) {
  std::int16_t year = -32768;
  std::int16_t month = 2;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { CivilToJulian(year, month, 1); }));
  EXPECT_EQ(year, -32768);
  EXPECT_EQ(month, 2);
  month = 3;
  EXPECT_NO_THROW(CivilToJulian(year, month, 1));
  month = 32767;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { CivilToJulian(year, month, 1); }));
}

TEST(CivilToJulian, OverflowsWithTheDay) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_NO_THROW(JulianDay(2000, 3, largest));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianDay(2000, 3, std::numeric_limits<double>::infinity()); }));
}

TEST(JulianCenturies, CountFrom1900) {
  EXPECT_TRUE(Same(0, JulianCenturies(2415020.0)));
  EXPECT_TRUE(Same(1, JulianCenturies(2451545.0)));
  EXPECT_TRUE(Same(-1, JulianCenturies(2378495.0)));
}

// Compares both directions with the standard library's calendar, each day at another minute. This minute is often no
// double: then the Julian day may be the one just below, which comes back one minute low.
TEST_F(JulianToCivilTest, AgreesWithTheCalendarOnEveryDayFrom1500To2199) {
  using std::chrono::days;
  using std::chrono::sys_days;
  struct Date : std::chrono::year_month_day {
    explicit Date(sys_days day) : year_month_day(day) {}
    [[nodiscard]] int Year() const { return static_cast<int>(year()); }
    [[nodiscard]] int Month() const { return static_cast<int>(static_cast<unsigned>(month())); }
    [[nodiscard]] int Day() const { return static_cast<int>(static_cast<unsigned>(day())); }
  };
  for (int day = 2268924; day < 2524594; ++day) {
    const sys_days instant(days(day - 2440588));
    const Date gregorian(instant);
    const int minute = day % 1440;
    const double julianDay = JulianDay(gregorian.Year(), gregorian.Month(), gregorian.Day() + minute / 1440.0);
    ASSERT_TRUE(Near(day - 0.5 + minute / 1440.0, julianDay, 1e-9));

    // Until 1582 like any four years that begin with a leap year, here from 2000 on.
    const bool julian = day < 2299161;
    const Date date(julian ? sys_days(std::chrono::year(2000) / 1 / 1) + days(day % 1461) : instant);
    const int year = date.Year() - (julian ? 6712 - day / 1461 * 4 : 0);
    const double part = julianDay + 0.5 - day;
    JulianToCivil(julianDay);
    ASSERT_EQ(std::tuple(CalYear, CalMonth, CalDay, CalHour, CalMinute),
              std::tuple(year, date.Month(), date.Day(), static_cast<int>(part * 24 + 0.00005),
                         static_cast<int>(part * 1440) % 60))
        << julianDay;
  }
}

TEST_F(JulianToCivilTest, BeginsInTheYearMinus4712) {
  JulianToCivil(0);
  ExpectCivil(-4712, 1, 1, 12, 0);
  JulianToCivil(1721057.5);
  ExpectCivil(0, 1, 1, 0, 0);
}

TEST_F(JulianToCivilTest, ShowsTheNextHourWithMinute59JustBeforeAFullHour) {
  JulianToCivil(kMidnight + (9 * 60 + 59.9997) / 1440);
  ExpectCivil(2003, 8, 19, 10, 59);
  JulianToCivil(kMidnight + 9.99999 / 24);
  ExpectCivil(2003, 8, 19, 10, 59);
  JulianToCivil(kMidnight + 9.9999 / 24);
  ExpectCivil(2003, 8, 19, 9, 59);
  JulianToCivil(kMidnight + 23.99999 / 24);
  ExpectCivil(2003, 8, 19, 24, 59);
}

TEST_F(JulianToCivilTest, GivesTheSameHourInEveryLocale) {
  DecimalSeparator = L",";
  JulianToCivil(kMidnight + 9.99999 / 24);
  ExpectCivil(2003, 8, 19, 10, 59);
  DecimalSeparator = L"";
  JulianToCivil(kMidnight + 5.25 / 24);
  ExpectCivil(2003, 8, 19, 5, 15);
}

TEST_F(JulianToCivilTest, OverflowLeavesTheVariablesAlone) {
  JulianToCivil(2452871.0);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(2147483647.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(-2147483649.0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(1e300); }));
  EXPECT_EQ(CalWholeDays, 2452871);
  EXPECT_TRUE(Same(0.5, CalDayPart));
  ExpectCivil(2003, 8, 19, 12, 0);
  // These whole days fit, but not one more.
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(2147483646.75); }));
  EXPECT_EQ(CalWholeDays, 2147483647);
  EXPECT_TRUE(Same(0.25, CalDayPart));
  ExpectCivil(2003, 8, 19, 12, 0);
}

}  // namespace mMoon
