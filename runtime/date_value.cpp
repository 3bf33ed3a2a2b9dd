#include "runtime/date_value.h"

#include <chrono>
#include <cmath>

#include "runtime/checked.h"
#include "runtime/locale_names.h"

namespace runtime {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kMinutesPerDay = 24 * 60;
constexpr int kSecondsPerDay = kMinutesPerDay * 60;
constexpr sys_days kEpoch = std::chrono::year{1899} / 12 / 30;

void RequireYear(int year) {
  if (year < kFirstYear || year > kLastYear) {
    throw RuntimeError(ErrorNumber::InvalidProcedureCall);
  }
}

/// The nearest whole second, counted from the epoch.
std::int64_t WholeSeconds(DateValue date) {
  const double seconds = std::floor(Checked(date) * kSecondsPerDay + 0.5);
  // Keeps the cast within 64 bits. The limit is twice the calendar's span, so no valid date is refused.
  if (std::fabs(seconds) > 2.0 * kLastYear * 366 * kSecondsPerDay) {
    throw RuntimeError(ErrorNumber::InvalidProcedureCall);
  }
  return static_cast<std::int64_t>(seconds);
}

/// The time of day of a date in whole seconds, 0..86399.
int SecondOfDay(DateValue date) {
  const auto remainder = static_cast<int>(WholeSeconds(date) % kSecondsPerDay);
  return remainder < 0 ? remainder + kSecondsPerDay : remainder;
}

std::wstring TwoDigits(int value) {
  return {static_cast<wchar_t>(L'0' + value / 10), static_cast<wchar_t>(L'0' + value % 10)};
}

}  // namespace

DateValue DateSerial(int year, int month, int day) {
  RequireYear(year);
  const sys_days firstOfMonth =
      std::chrono::year{year} / std::chrono::month{static_cast<unsigned>(month)} / std::chrono::day{1};
  const sys_days date = firstOfMonth + days{day - 1};
  RequireYear(static_cast<int>(std::chrono::year_month_day{date}.year()));
  return static_cast<double>((date - kEpoch).count());
}

DateValue AddTime(DateValue date, int hours, int minutes, int seconds) {
  const std::int64_t total = (std::int64_t{hours} * 60 + minutes) * 60 + seconds;
  const std::int64_t secondOfDay = (total % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay;
  const std::int64_t wholeDays = (total - secondOfDay) / kSecondsPerDay;
  return date + static_cast<double>(wholeDays) + static_cast<double>(secondOfDay) / kSecondsPerDay;
}

DateParts PartsOf(DateValue date) {
  const int second = SecondOfDay(date);
  const std::int64_t dayNumber = (WholeSeconds(date) - second) / kSecondsPerDay;
  const std::chrono::year_month_day calendar = kEpoch + days{dayNumber};
  RequireYear(static_cast<int>(calendar.year()));
  return {.year = static_cast<std::int16_t>(static_cast<int>(calendar.year())),
          .month = static_cast<std::int16_t>(static_cast<unsigned>(calendar.month())),
          .day = static_cast<std::int16_t>(static_cast<unsigned>(calendar.day())),
          .hour = static_cast<std::int16_t>(second / 3600),
          .minute = static_cast<std::int16_t>(second / 60 % 60),
          .second = static_cast<std::int16_t>(second % 60)};
}

bool SameMinute(DateValue a, DateValue b) {
  return WholeSeconds(a) - SecondOfDay(a) % 60 == WholeSeconds(b) - SecondOfDay(b) % 60;
}

std::wstring DateText(DateValue date, const LocaleNames& locale) {
  const DateParts parts = PartsOf(date);
  return TwoDigits(parts.day) + L"-" + locale.abbreviatedMonths.at(static_cast<std::size_t>(parts.month - 1)) + L"-" +
         TwoDigits(parts.year % 100);
}

std::wstring TimeText(DateValue date, const LocaleNames& locale) {
  const int minuteOfDay = SecondOfDay(date) / 60;
  const bool afternoon = minuteOfDay >= kMinutesPerDay / 2;
  const int hour = minuteOfDay / 60 % 12;
  const std::wstring& marker = afternoon ? locale.pm : locale.am;
  // Without a marker 9:05 could be morning or evening.
  const std::wstring standIn = afternoon ? L"PM" : L"AM";
  return WholeText(hour == 0 ? 12 : hour) + L":" + TwoDigits(minuteOfDay % 60) + L" " +
         (marker.empty() ? standIn : marker);
}

std::wstring HoursText(double days) {
  const int minuteOfDay = SecondOfDay(std::fabs(days)) / 60;
  return WholeText(minuteOfDay / 60) + L":" + TwoDigits(minuteOfDay % 60);
}

std::wstring WholeText(int value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

}  // namespace runtime
