#include "report/moon_report.h"

#include "astro/checked.h"
#include "astro/number_format.h"
#include "tray/tray_icon_data.h"

namespace mMoon {

ReportSurroundings Surroundings;
double OffsetMinutes = 0;
double YearStartJD = 0;
Boolean NextPhasesShown = False;

namespace {

using forms::DateValue;

/// The local dates of a Full Moon and a New Moon.
struct PhaseDates {
  DateValue Full, New;
};

/// CivilToJulian leaves January and February changed in its arguments; here they are copies.
double JulianDayOf(std::int16_t year, std::int16_t month, double day) { return CivilToJulian(year, month, day); }

/// Runs the astronomy for a base instant. The local clock reading goes in as Universal Time, on purpose: the offset is
/// applied only on the way out.
void ComputeFor(DateValue base) {
  const forms::DateParts at = forms::PartsOf(base);
  const double jd = JulianDayOf(at.year, at.month, DayFraction(at.day, at.hour, at.minute));
  Centuries = JulianCenturies(jd);
  SunPosition(jd);
  MoonPosition(jd);
  const double jd0 = JulianDayOf(at.year, at.month, DayFraction(at.day, 0, 0));
  YearStartJD = JulianDayOf(at.year, 1, 1.0);
  FindPhases(at.year, jd0, YearStartJD);
}

/// A Julian day on the universal-time scale as a local date.
DateValue LocalDateOf(double jd) {
  JulianToCivil(jd);
  const DateValue date =
      forms::DateSerial(RoundTo<std::int16_t>(CalYear), RoundTo<std::int16_t>(CalMonth), RoundTo<std::int16_t>(CalDay));
  return forms::AddTime(date, CalHour, RoundTo<std::int16_t>(CalMinute + Checked(OffsetMinutes)));
}

PhaseDates FoundPhaseDates() {
  const DateValue full = LocalDateOf(FullMoonJD);
  return {.Full = full, .New = LocalDateOf(NewMoonJD)};
}

PhaseDates PhaseDatesFor(DateValue base) {
  ComputeFor(base);
  return FoundPhaseDates();
}

/// Writes two lines in the order of time: the earlier phase into the upper label, the later one into the label below.
void WritePair(const PhaseDates& dates, std::size_t upper, const std::wstring& which,
               const forms::LocaleNames& locale) {
  const auto write = [&](std::size_t index, const wchar_t* phase, DateValue date) {
    Surroundings.frmMoon->SetMoonLine(
        index, which + phase + L" Moon : " + forms::DateText(date, locale) + L" " + forms::TimeText(date, locale));
  };
  const std::size_t lower = upper + 1;
  if (dates.Full < dates.New) {
    write(upper, L"Full", dates.Full);
    write(lower, L"New", dates.New);
  } else {
    write(lower, L"Full", dates.Full);
    write(upper, L"New", dates.New);
  }
}

/// The days are taken from the text rounded to three decimals, on purpose: 5.9996 days count as 6.
std::wstring TipText(double Age) {
  const std::int16_t days = LeadingInteger(FormatNumber(Age, L"00.000"));
  return L"Moon's Age - " + forms::WholeText(days) + L" Days " + forms::HoursText(Age);
}

}  // namespace

void UpdateMoonReport() {
  const forms::LocaleNames locale = Surroundings.ReadLocale();
  DecimalSeparator = locale.decimalSeparator;

  NextPhasesShown = False;
  ComputeFor(Surroundings.Now());
  DrawMoonPhase(*Surroundings.frmMoon, Illumination, WaningFlag);
  PhaseDates next = FoundPhaseDates();
  WritePair(next, 2, L"Next ", locale);
  NextPhasesShown = True;

  const DateValue now = Surroundings.Now();
  if (next.New <= now || next.Full <= now) {
    // A phase that has already passed: the phases are looked for again from five days later. The texts of these
    // corrected lines say "New" where the others say "Next".
    next = PhaseDatesFor(now + 5);
    WritePair(next, 2, L"New ", locale);
  }

  const DateValue nearer = next.Full < next.New ? next.Full : next.New;
  const PhaseDates last = PhaseDatesFor(nearer - 30.0);
  WritePair(last, 0, L"Last ", locale);

  const double Age = Surroundings.Now() - last.New;
  TrayIconData.SetTip(TipText(Age));
}

}  // namespace mMoon
