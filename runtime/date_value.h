#pragma once

#include <cstdint>
#include <string>

namespace runtime {

struct LocaleNames;

/// A local date with its time of day: days since 30 December 1899, 0 h. It is linear on both sides of zero: the floor
/// is the day, what is left the time of day, so that adding 5 or subtracting 30 means whole days everywhere.
using DateValue = double;

/// A date taken apart, after rounding to the nearest second: year 100..9999, month 1..12, day 1..31, hour 0..23, minute
/// and second 0..59.
struct DateParts {
  std::int16_t year, month, day, hour, minute, second;
};

/// Returns the date at 0 h. The month is 1..12; a day beyond the end of the month runs on into the next ones.
/// Error: 5 Invalid procedure call or argument outside the years 100 to 9999.
[[nodiscard]] DateValue DateSerial(int year, int month, int day);

/// Returns the date plus a time of day. Minutes outside 0..59 carry into hours and hours outside 0..23 into days, in
/// either direction.
[[nodiscard]] DateValue AddTime(DateValue date, int hours, int minutes, int seconds = 0);

/// Takes a date apart.
/// Error: 5 Invalid procedure call or argument outside the years 100 to 9999.
[[nodiscard]] DateParts PartsOf(DateValue date);

/// Returns whether two dates show the same text in the form "dd-MM-yyyy hh:mm".
[[nodiscard]] bool SameMinute(DateValue a, DateValue b);

/// The date in the form "dd-mmm-yy": 24-Nov-26, with the locale's abbreviation of the month.
[[nodiscard]] std::wstring DateText(DateValue date, const LocaleNames& locale);

/// The time of day in the form "h:mm AM/PM": 9:05 PM, with the locale's markers, or AM and PM where it has none.
[[nodiscard]] std::wstring TimeText(DateValue date, const LocaleNames& locale);

/// The part of a day in a duration of days, in the form "h:mm": 7:48. Of a negative duration the fraction of its
/// magnitude counts: -0.28125 is 6:45.
[[nodiscard]] std::wstring HoursText(double days);

/// A whole number in decimal digits. Unlike std::to_wstring it does without the run-time library's wide printf (12 kB).
[[nodiscard]] std::wstring WholeText(int value);

}  // namespace runtime
