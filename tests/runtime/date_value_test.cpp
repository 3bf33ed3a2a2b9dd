#include "runtime/date_value.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "runtime/locale_names.h"
#include "support/raises.h"

using support::Raises;

namespace runtime {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

DateValue DateAndTime(int year, int month, int day, int hour, int minute, int second = 0) {
  return AddTime(DateSerial(year, month, day), hour, minute, second);
}

void ExpectParts(DateValue date, int year, int month, int day, int hour, int minute, int second) {
  const DateParts parts = PartsOf(date);
  EXPECT_EQ((std::array<int, 6>{parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second}),
            (std::array<int, 6>{year, month, day, hour, minute, second}));
}

}  // namespace

TEST(DateSerial, CountsDaysFromTheEndOf1899) {
  EXPECT_EQ(DateSerial(1899, 12, 30), 0);
  EXPECT_EQ(DateSerial(1900, 1, 1), 2);
  EXPECT_EQ(DateSerial(2000, 1, 1), 36526);
  EXPECT_EQ(DateSerial(2026, 11, 24), 46350);
  EXPECT_EQ(DateSerial(1899, 12, 29), -1);
}

TEST(DateSerial, RunsOnBeyondTheEndOfTheMonth) {
  EXPECT_EQ(DateSerial(2003, 2, 29), DateSerial(2003, 3, 1));
  EXPECT_EQ(DateSerial(2003, 12, 32), DateSerial(2004, 1, 1));
  EXPECT_EQ(DateSerial(2003, 3, 0), DateSerial(2003, 2, 28));
}

TEST(DateSerial, RefusesYearsOutsideTheCalendar) {
  EXPECT_NO_THROW((void)DateSerial(100, 1, 1));
  EXPECT_NO_THROW((void)DateSerial(9999, 12, 31));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(9999, 12, 32); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(100, 1, 0); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(99, 12, 31); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(10000, 1, 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(-32768, 1, 1); }));
  // Even if the day would carry the date into a valid year.
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(99, 12, 32); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)DateSerial(10000, 1, 0); }));
}

TEST(AddTime, CarriesInBothDirections) {
  const DateValue date = DateSerial(2003, 8, 19);
  EXPECT_NEAR(AddTime(date, 12, 0), date + 0.5, 0);
  EXPECT_NEAR(AddTime(date, 17, 60), date + 0.75, 0);
  EXPECT_NEAR(AddTime(date, 24, 0), date + 1, 0);
  EXPECT_NEAR(AddTime(date, 23, 59, 60), date + 1, 0);
  EXPECT_NEAR(AddTime(date, 0, -1), date - 1 + 1439.0 / 1440, 0);
  EXPECT_NEAR(AddTime(date, 2, -300), date - 1 + 21.0 / 24, 0);
  EXPECT_NEAR(AddTime(date, 0, 32767), date + 22 + 1087.0 / 1440, 0);
  EXPECT_NEAR(AddTime(date, 0, -32768), date - 23 + 352.0 / 1440, 0);
}

TEST(PartsOf, TakesADateApart) {
  ExpectParts(DateAndTime(2026, 11, 24, 21, 5, 9), 2026, 11, 24, 21, 5, 9);
  ExpectParts(0, 1899, 12, 30, 0, 0, 0);
  // The day is the value rounded down, also below 0: -0.25 is 18 h on the day before the epoch.
  ExpectParts(-0.25, 1899, 12, 29, 18, 0, 0);
  ExpectParts(-1, 1899, 12, 29, 0, 0, 0);
  ExpectParts(DateAndTime(1800, 2, 28, 23, 59, 59), 1800, 2, 28, 23, 59, 59);
}

TEST(PartsOf, RoundsToTheNearestSecond) {
  const DateValue date = DateSerial(2003, 12, 31);
  ExpectParts(date + 86399.49 / 86400, 2003, 12, 31, 23, 59, 59);
  ExpectParts(date + 86399.51 / 86400, 2004, 1, 1, 0, 0, 0);
}

TEST(PartsOf, RefusesDatesOutsideTheCalendar) {
  ExpectParts(DateSerial(100, 1, 1), 100, 1, 1, 0, 0, 0);
  ExpectParts(DateAndTime(9999, 12, 31, 23, 59, 59), 9999, 12, 31, 23, 59, 59);
  for (const DateValue date : {DateSerial(100, 1, 1) - 1, DateSerial(9999, 12, 31) + 1, 1e15, -1e300, kNaN}) {
    EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [&] { (void)PartsOf(date); })) << date;
  }
}

TEST(SameMinute, ChangesWithEveryFullMinuteOfADay) {
  for (const DateValue date : {DateSerial(2003, 8, 19), DateSerial(1800, 2, 28)}) {
    for (int second = 1; second < 86400; ++second) {
      ASSERT_EQ(SameMinute(AddTime(date, 0, 0, second - 1), AddTime(date, 0, 0, second)), second % 60 != 0) << second;
    }
    EXPECT_FALSE(SameMinute(date, date + 1));
    EXPECT_FALSE(SameMinute(date + 1, date));
  }
}

TEST(TimeText, HasATwelveHourClock) {
  const DateValue date = DateSerial(2026, 11, 24);
  EXPECT_EQ(TimeText(AddTime(date, 21, 5), {}), L"9:05 PM");
  EXPECT_EQ(TimeText(AddTime(date, 0, 0), {}), L"12:00 AM");
  EXPECT_EQ(TimeText(AddTime(date, 11, 59, 59), {}), L"11:59 AM");
  EXPECT_EQ(TimeText(AddTime(date, 12, 0), {}), L"12:00 PM");
  EXPECT_EQ(TimeText(AddTime(date, 13, 30), {}), L"1:30 PM");
}

TEST(TimeText, TakesTheMarkersFromTheLocale) {
  LocaleNames locale;
  locale.am = L"a. m.";
  locale.pm = L"p. m.";
  EXPECT_EQ(TimeText(0.25, locale), L"6:00 a. m.");
  EXPECT_EQ(TimeText(0.75, locale), L"6:00 p. m.");
}

TEST(HoursText, RoundsToTheNearestSecondFirst) {
  EXPECT_EQ(HoursText(1 + 59.4 / 86400), L"0:00");
  EXPECT_EQ(HoursText(1 + 59.6 / 86400), L"0:01");
  EXPECT_EQ(HoursText(1 + 86399.6 / 86400), L"0:00");
}

}  // namespace runtime
