// Compares the calendar with the standard library's, and checks the zone, for any 16-bit values and any double.
// Input: year, month, day, hour, minute (16 bits each), a Julian day or day of the month (a double), the zone's result
// and three biases (32 bits each), the daylight flag (16 bits).

#include <chrono>

#include "astro/mMoon.h"
#include "fuzz/fuzzing.h"
#include "report/local_time_offset.h"
#include "report/surroundings.h"

using namespace fuzzing;
using namespace mMoon;
using namespace runtime;

namespace {

constexpr double kUnixEpochJD = 2440587.5;
constexpr double kGregorianStartJD = 2299160.5;

bool Fits16(int value) { return Within(-32768, value, 32767); }

void DayFractions(std::int16_t day, std::int16_t hour, std::int16_t minute) {
  double fraction = 0;
  const auto error = ErrorOf([&] { fraction = DayFraction(day, hour, minute); });
  const int minutes = hour * 60 + minute;
  if (Fits16(hour * 60) && Fits16(minutes)) {
    Require(!error && std::fabs(fraction - day - minutes / 1440.0) < 1e-11, "the fraction of the day");
  } else {
    Require(error == ErrorNumber::Overflow, "minutes beyond 16 bits overflow");
  }
}

/// Takes any arguments. A valid date gives the proleptic Gregorian calendar's day.
void CivilToJulianDay(const std::int16_t year, const std::int16_t month, const double day) {
  std::int16_t writtenYear = year;
  std::int16_t writtenMonth = month;
  double jd = 0;
  const auto error = ErrorOf([&] { jd = CivilToJulian(writtenYear, writtenMonth, day); });
  RequireArithmetic(error);
  if (month >= 3 || (error && year == -32768)) {
    Require(writtenYear == year && writtenMonth == month, "March to December are left alone");
  } else {
    Require(writtenYear == year - 1 && writtenMonth == month + 12, "January and February move to the year before");
  }
  if (!error && Within(1, month, 12) && Within(1, day, 29) && day == std::floor(day)) {
    const std::chrono::sys_days want = std::chrono::year{year} / std::chrono::month{static_cast<unsigned>(month)} /
                                       std::chrono::day{static_cast<unsigned>(day)};
    Require(jd == static_cast<double>(want.time_since_epoch().count()) + kUnixEpochJD,
            "a date of the Gregorian calendar");
  }
}

void JulianDayToCivil(double jd) {
  const auto error = ErrorOf([&] { JulianToCivil(jd); });
  RequireArithmetic(error);
  if (error) {
    Require(!(std::fabs(jd) < 2147483646.0), "a day of 32 bits has a date");
    return;
  }
  const double sinceMidnight = jd + 0.5;
  Require(CalWholeDays == std::floor(sinceMidnight), "whole days");
  Require(CalDayPart == sinceMidnight - CalWholeDays && Within(0, CalDayPart, 1), "the part of a day");
  Require(Within(1, CalMonth, 12) && CalMonth == std::floor(CalMonth), "a month");
  Require(Within(1, CalDay, 32) && CalDay == std::floor(CalDay), "a day");
  Require(Within(0, CalHour, 24) && Within(0, CalMinute, 59), "a time of day");
  // Close to day 0 a Julian day has more digits than a day of the month: the last instants are rounded up.
  Require(CalDay <= 31 || std::fabs(jd) < 64, "a day of the month");
  if (jd >= kGregorianStartJD && CalYear <= 32767) {
    const std::chrono::year_month_day want{std::chrono::sys_days{} +
                                           std::chrono::days{CalWholeDays - static_cast<int>(kUnixEpochJD + 0.5)}};
    Require(CalYear == static_cast<int>(want.year()) && CalMonth == static_cast<unsigned>(want.month()) &&
                CalDay == static_cast<unsigned>(want.day()),
            "a date of the Gregorian calendar");
  }
}

TimeZoneReading zone;

void ZoneOffset(Boolean daylight) {
  tidewell::surroundings.ReadTimeZone = [] { return zone; };
  UseDaylightBias = daylight;
  std::int32_t offset = 0;
  const auto error = ErrorOf([&] { offset = LocalTimeOffset(); });
  Require(!error || error == ErrorNumber::Overflow, "a sum of biases overflows at most");
  const std::int64_t season = zone.Result == 2 ? zone.DaylightBias : zone.StandardBias;
  const bool valid = Within(0, zone.Result, 2);
  const std::int64_t want = daylight == False ? -std::int64_t{zone.Bias} : valid ? -(season + zone.Bias) : 0;
  Require(error ? !Within(-2147483647, static_cast<double>(want), 2147483647) : offset == want, "minus the biases");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto year = input.Take<std::int16_t>();
  const auto month = input.Take<std::int16_t>();
  const auto day = input.Take<std::int16_t>();
  DayFractions(day, input.Take<std::int16_t>(), input.Take<std::int16_t>());
  CivilToJulianDay(year, month, day);

  const auto x = input.Take<double>();
  CivilToJulianDay(year, month, x);
  JulianDayToCivil(x);
  double centuries = 0;
  const auto error = ErrorOf([&] { centuries = JulianCenturies(x); });
  Require(error.has_value() != std::isfinite(x) && std::isfinite(centuries), "only what is not finite fails");

  zone.Result = input.Take<std::int32_t>();
  zone.Bias = input.Take<std::int32_t>();
  zone.StandardBias = input.Take<std::int32_t>();
  zone.DaylightBias = input.Take<std::int32_t>();
  ZoneOffset(input.Take<Boolean>());
  return 0;
}
