#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "astro/mMoon.h"
#include "runtime/number_format.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Raises;

namespace mMoon {

using namespace runtime;

namespace {

using JulianToCivilTest = support::ModuleTest;

double JulianDay(int year, int month, double day) {
  auto y = static_cast<std::int16_t>(year);
  auto m = static_cast<std::int16_t>(month);
  return CivilToJulian(y, m, day);
}

auto Civil() { return std::tuple(CalYear, CalMonth, CalDay, CalHour, CalMinute); }

/// 19 August 2003, 0 h.
constexpr double kMidnight = 2452870.5;

}  // namespace

TEST(DayFraction, OverflowsWhenTheMinutesLeave16Bits) {
  EXPECT_NEAR(DayFraction(0, 546, 7), 32767.0 / 1440, 0);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, 546, 8); }));
  EXPECT_NEAR(DayFraction(0, -546, -8), -32768.0 / 1440, 0);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, -546, -9); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DayFraction(0, 547, -60); }));
}

TEST(CivilToJulian, GivesTheJulianDay) {
  EXPECT_NEAR(JulianDay(1957, 10, 4.81), 2436116.31, 0);  // Meeus, Astronomical Formulae for Calculators, ch. 3
  EXPECT_NEAR(JulianDay(-150, 3, 1), JulianDay(0, 3, 1) - 150 * 365 - 37, 0);   // with 37 leap days
  EXPECT_NEAR(JulianDay(-4000, 1, 1), JulianDay(2000, 1, 1) - 15 * 146097, 0);  // the calendar repeats itself
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
TEST(CivilToJulian, CountsOnBeyondTheLastMonth) { EXPECT_NEAR(JulianDay(2000, 32000, 1), 3430715.5, 0); }

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

// Compares both directions with the standard library's calendar, each day at another minute. The nearest double may lie
// just below a minute, which then comes back one minute low.
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
    ASSERT_NEAR(julianDay, day - 0.5 + minute / 1440.0, 1e-9);

    // Before 1582 every four years are alike: those from 2000 on stand in.
    const bool julian = day < 2299161;
    const Date date(julian ? sys_days(std::chrono::year(2000) / 1 / 1) + days(day % 1461) : instant);
    const int year = date.Year() - (julian ? 6712 - day / 1461 * 4 : 0);
    const double part = julianDay + 0.5 - day;
    JulianToCivil(julianDay);
    ASSERT_EQ(Civil(), std::tuple(year, date.Month(), date.Day(), static_cast<int>(part * 24 + 0.00005),
                                  static_cast<int>(part * 1440) % 60))
        << julianDay;
  }
}

TEST_F(JulianToCivilTest, BeginsInTheYearMinus4712) {
  JulianToCivil(0);
  EXPECT_EQ(Civil(), std::tuple(-4712, 1, 1, 12, 0));
  JulianToCivil(1721057.5);
  EXPECT_EQ(Civil(), std::tuple(0, 1, 1, 0, 0));
  // 1:28 comes back a minute low, because hours are days * 1440 / 60, not * 24. Later days have too few bits to tell.
  JulianToCivil(88 / 1440.0 - 0.5);
  EXPECT_EQ(Civil(), std::tuple(-4712, 1, 1, 1, 27));
}

TEST_F(JulianToCivilTest, ShowsTheNextHourWithMinute59JustBeforeAFullHour) {
  JulianToCivil(kMidnight + 9.99999 / 24);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 10, 59));
  JulianToCivil(kMidnight + 9.9999 / 24);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 9, 59));
  JulianToCivil(kMidnight + 23.99999 / 24);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 24, 59));
}

TEST_F(JulianToCivilTest, GivesTheSameHourInEveryLocale) {
  DecimalSeparator = L",";
  JulianToCivil(kMidnight + 9.99999 / 24);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 10, 59));
  DecimalSeparator = L"";
  JulianToCivil(kMidnight + 5.25 / 24);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 5, 15));
}

TEST_F(JulianToCivilTest, OverflowLeavesTheVariablesAlone) {
  JulianToCivil(2452871.0);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(2147483647.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(-2147483649.0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(1e300); }));
  EXPECT_EQ(CalWholeDays, 2452871);
  EXPECT_EQ(CalDayPart, 0.5);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 12, 0));
  // The whole days just fit, but the next step adds to them.
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { JulianToCivil(2147483646.75); }));
  EXPECT_EQ(CalWholeDays, 2147483647);
  EXPECT_EQ(CalDayPart, 0.25);
  EXPECT_EQ(Civil(), std::tuple(2003, 8, 19, 12, 0));
}

}  // namespace mMoon
