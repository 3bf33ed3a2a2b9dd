#include "report/moon_report.h"

#include <string>

#include "astro/mMoon.h"
#include "report/surroundings.h"
#include "runtime/checked.h"
#include "runtime/date_value.h"
#include "runtime/number_format.h"
#include "tray/shell_record.h"

namespace mMoon {

using runtime::DateValue;
using tidewell::surroundings;

namespace {

/// The local dates of a Full Moon and a New Moon.
struct PhaseDates {
  DateValue Full, New;
};

/// CivilToJulian changes its arguments in January and February; here they are copies.
double JulianDayOf(std::int16_t year, std::int16_t month, double day) { return CivilToJulian(year, month, day); }

/// Runs the astronomy for a base instant. On purpose the local clock's reading goes in as Universal Time: only the
/// results get the offset.
void ComputeFor(DateValue base) {
  const runtime::DateParts at = runtime::PartsOf(base);
  const double jd = JulianDayOf(at.year, at.month, DayFraction(at.day, at.hour, at.minute));
  Centuries = JulianCenturies(jd);
  SunPosition(jd);
  MoonPosition(jd);
  // On purpose the search starts at 0 h.
  const double jd0 = JulianDayOf(at.year, at.month, DayFraction(at.day, 0, 0));
  YearStartJD = JulianDayOf(at.year, 1, 1.0);
  FindPhases(at.year, jd0, YearStartJD);
}

/// A Julian day on the universal-time scale as a local date.
DateValue LocalDateOf(double jd) {
  JulianToCivil(jd);
  const DateValue date =
      runtime::DateSerial(runtime::CheckedCast<std::int16_t>(CalYear), runtime::CheckedCast<std::int16_t>(CalMonth),
                          runtime::CheckedCast<std::int16_t>(CalDay));
  const auto minutes = runtime::RoundTo<std::int16_t>(CalMinute + runtime::Checked(OffsetMinutes));
  return runtime::AddTime(date, CalHour, minutes);
}

PhaseDates FoundPhaseDates() { return {.Full = LocalDateOf(FullMoonJD), .New = LocalDateOf(NewMoonJD)}; }

PhaseDates PhaseDatesFor(DateValue base) {
  ComputeFor(base);
  return FoundPhaseDates();
}

/// A line: its prefix and the date of its phase.
struct PhaseLine {
  const wchar_t* prefix;
  DateValue date;
};

/// Writes two lines in the order of time: the earlier phase into the upper label, the later one below it.
void WritePair(std::size_t upper, const PhaseLine& full, const PhaseLine& newMoon, const runtime::LocaleNames& locale) {
  const auto write = [&](std::size_t index, const PhaseLine& line) {
    surroundings.Form().SetMoonLine(
        index, line.prefix + runtime::DateText(line.date, locale) + L" " + runtime::TimeText(line.date, locale));
  };
  const bool fullFirst = full.date < newMoon.date;
  write(upper + (fullFirst ? 0 : 1), full);
  write(upper + (fullFirst ? 1 : 0), newMoon);
}

/// On purpose the days come from a text rounded to three decimals: 5.9996 days count as 6.
std::wstring TipText(double Age) {
  const std::int16_t days = runtime::LeadingInteger(runtime::FormatNumber(Age, L"00.000"));
  return L"Moon's Age - " + runtime::WholeText(days) + L" Days " + runtime::HoursText(Age);
}

}  // namespace

void UpdateMoonReport() {
  const runtime::LocaleNames locale = surroundings.ReadLocale();
  runtime::DecimalSeparator = locale.decimalSeparator;

  NextPhasesShown = runtime::False;
  ComputeFor(surroundings.Now());
  DrawMoonPhase(surroundings.Form(), Illumination, WaningFlag);  // changes both
  auto [NextFull, NextNew] = FoundPhaseDates();
  WritePair(2, {L"Next Full Moon : ", NextFull}, {L"Next New Moon : ", NextNew}, locale);
  NextPhasesShown = runtime::True;

  const DateValue now = surroundings.Now();
  if (NextNew <= now || NextFull <= now) {
    // A phase has already passed: search again from five days later. On purpose the corrected lines say "New".
    const PhaseDates corrected = PhaseDatesFor(now + 5);
    NextFull = corrected.Full;
    NextNew = corrected.New;
    WritePair(2, {L"New Full Moon : ", NextFull}, {L"New New Moon : ", NextNew}, locale);
  }

  const DateValue nearer = NextFull < NextNew ? NextFull : NextNew;
  // On purpose 30 days back, which at times finds the coming Full Moon again.
  const auto [LastFull, LastNew] = PhaseDatesFor(nearer - 30.0);
  WritePair(0, {L"Last Full Moon : ", LastFull}, {L"Last New Moon : ", LastNew}, locale);

  const double Age = surroundings.Now() - LastNew;
  TrayIconData.SetTip(TipText(Age));
}

}  // namespace mMoon
