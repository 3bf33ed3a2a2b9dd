#pragma once

#include <cstdint>
#include <string>

namespace runtime {

struct LocaleNames;

/// A local date with its time of day: days since 30 December 1899, 0 h. It is linear, also below zero: the floor is the
/// day, the rest the time of day, so adding 5 always means five days.
using DateValue = double;

/// A date taken apart, after rounding to the nearest second: year 100..9999, month 1..12, day 1..31, hour 0..23, minute
/// and second 0..59.
struct DateParts {
  std::int16_t year, month, day, hour, minute, second;
};

/// Returns the date at 0 h. The month is 1..12; a day beyond the end of the month carries into the next months.
/// Error: 5 Invalid procedure call or argument outside the years 100 to 9999.
[[nodiscard]] DateValue DateSerial(int year, int month, int day);

/// Returns the date plus a time of day. Minutes outside 0..59 carry into hours, hours outside 0..23 into days.
[[nodiscard]] DateValue AddTime(DateValue date, int hours, int minutes, int seconds = 0);

/// Takes a date apart.
/// Error: 5 Invalid procedure call or argument outside the years 100 to 9999.
[[nodiscard]] DateParts PartsOf(DateValue date);

/// Returns whether two dates, rounded to the second, lie in the same minute.
[[nodiscard]] bool SameMinute(DateValue a, DateValue b);

/// The date in the form "dd-mmm-yy": 24-Nov-26, with the locale's abbreviation of the month.
[[nodiscard]] std::wstring DateText(DateValue date, const LocaleNames& locale);

/// The time of day in the form "h:mm AM/PM": 9:05 PM, with the locale's markers, or AM and PM if it has none.
[[nodiscard]] std::wstring TimeText(DateValue date, const LocaleNames& locale);

/// The fraction of a duration in days as "h:mm": 7:48. On purpose a negative duration counts by its magnitude: -0.28125
/// is 6:45.
[[nodiscard]] std::wstring HoursText(double days);

/// A whole number in decimal digits. std::to_wstring would bring the library's wide printf (12 kB).
[[nodiscard]] std::wstring WholeText(int value);

}  // namespace runtime
