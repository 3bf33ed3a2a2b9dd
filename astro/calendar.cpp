#include "astro/mMoon.h"
#include "runtime/checked.h"
#include "runtime/number_format.h"

namespace mMoon {

using runtime::Checked;
using runtime::CheckedCast;
using runtime::Int;

namespace {

constexpr double kEpoch1900 = 2415020.0;
constexpr double kDaysPerCentury = 36525.0;

/// The first whole day of the Gregorian calendar: 15 October 1582.
constexpr std::int32_t kGregorianStart = 2299161;

}  // namespace

double DayFraction(std::int16_t day, std::int16_t hour, std::int16_t minute) {
  const auto hourMinutes = CheckedCast<std::int16_t>(hour * 60);
  const auto minutes = CheckedCast<std::int16_t>(hourMinutes + minute);
  return day + Checked(minutes) / 1440;
}

double CivilToJulian(std::int16_t& year, std::int16_t& month, double day) {
  if (month < 3) {
    year = CheckedCast<std::int16_t>(year - 1);
    month = CheckedCast<std::int16_t>(month + 12);
  }
  const Checked A = Int(Checked(year) / 100);
  const Checked B = 2 - A + Int(A / 4);
  const Checked wholeDays = Int(365.25 * Checked(year)) + Int(30.6001 * Checked(CheckedCast<std::int16_t>(month + 1)));
  return wholeDays + day + 1720994.5 + B;
}

double JulianCenturies(double jd) { return (Checked(jd) - kEpoch1900) / kDaysPerCentury; }

void JulianToCivil(double jd) {
  const Checked sinceMidnight = Checked(jd) + 0.5;
  CalWholeDays = CheckedCast<std::int32_t>(Int(sinceMidnight));
  CalDayPart = sinceMidnight - CalWholeDays;

  Checked A = CalWholeDays;
  if (CalWholeDays >= kGregorianStart) {
    const Checked alpha = Int((Checked(CalWholeDays) - 1867216.25) / 36524.25);
    A = Checked(CheckedCast<std::int32_t>(std::int64_t{CalWholeDays} + 1)) + alpha - Int(alpha / 4);
  }
  const Checked B = A + 1524;
  const Checked C = Int((B - 122.1) / 365.25);
  const Checked D = Int(365.25 * C);
  const Checked E = Int((B - D) / 30.6001);
  const Checked dayWithFraction = (B - D) - Int(30.6001 * E) + CalDayPart;

  CalDay = Int(dayWithFraction);
  // Not * 24: for very small Julian days the last bits would differ.
  const Checked hours = (dayWithFraction - CalDay) * 1440 / 60;
  CalMinute = CheckedCast<std::int16_t>(Int((hours - Int(hours)) * 60));
  CalMonth = E < 13.5 ? E - 1 : E - 13;
  CalYear = CalMonth > 2.5 ? C - 4716 : C - 4715;
  CalHour = runtime::LeadingInteger(runtime::FormatNumber(hours, L"00.0000"));  // rounded: 24 is possible
}

}  // namespace mMoon
