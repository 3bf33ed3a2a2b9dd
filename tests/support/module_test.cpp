#include "support/module_test.h"

#include "astro/mMoon.h"
#include "astro/number_format.h"
#include "report/moon_report.h"
#include "report/settings.h"
#include "tray/phase_drawing.h"
#include "tray/tray_icon_data.h"

namespace mMoon {

namespace {

void Reset() {
  CalWholeDays = 0;
  CalHour = CalMinute = 0;
  for (double* variable : {&CalDayPart,          &CalYear,           &CalMonth,         &CalDay,
                           &Centuries,           &SunMeanLongitude,  &SunMeanAnomaly,   &EarthEccentricity,
                           &SunEquationOfCentre, &SunTrueAnomaly,    &SunTrueLongitude, &SunApparentLongitude,
                           &Obliquity,           &SunRightAscension, &SunDeclination,   &MoonMeanLongitude,
                           &MoonMeanAnomaly,     &MoonElongation,    &MoonArgLatitude,  &MoonNodeLongitude,
                           &MoonLongitude,       &MoonLatitude,      &MoonParallax,     &MoonRightAscension,
                           &MoonDeclination,     &Illumination,      &YearPercent,      &NewMoonJD,
                           &FullMoonJD,          &OffsetMinutes,     &YearStartJD}) {
    *variable = 0;
  }
  WaningFlag = 0;
  UseDaylightBias = False;
  ReadTimeZone = [] { return TimeZoneReading{}; };
  NextPhasesShown = False;
  DecimalSeparator = L".";
  Settings = {};
  TrayIconData = {};
  IconNumber = 0;
  Surroundings = {};
}

}  // namespace

}  // namespace mMoon

void support::ResetModule() { mMoon::Reset(); }
