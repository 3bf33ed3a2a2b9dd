// Prints all results of the module at 10,000 instants and the texts of the report at 500, one line each, for comparing
// two builds of the program. Each cell is a kind, a name and a value: "angle" is compared modulo a turn, "number" as it
// is, "text" must be the same.

#include <cstdint>
#include <cstdio>
#include <string>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "runtime/number_format.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"
#include "tray/tray_icon_data.h"

namespace mMoon {

using namespace runtime;

namespace {

constexpr int kInstants = 10000;
constexpr int kReports = 500;

constexpr double kFirstDay = 2378496.5;  // 1 January 1800
constexpr double kLastDay = 2524958.5;   // 1 January 2201

/// A linear congruential generator (Knuth's MMIX constants): the same numbers in every build.
class Generator {
 public:
  /// A number in 0..1, 1 left out.
  double Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state_ >> 11) / 9007199254740992.0;
  }

 private:
  std::uint64_t state_ = 24150200;
};

void PrintAngle(const char* name, double value) { std::printf("\tangle %s %.17g", name, value); }
void PrintNumber(const char* name, double value) { std::printf("\tnumber %s %.17g", name, value); }

/// The texts of the fake locale are ASCII.
void PrintText(const char* name, const std::wstring& text) {
  std::printf("\ttext %s %s", name, std::string(text.begin(), text.end()).c_str());
}

void PrintSun() {
  PrintAngle("SunMeanLongitude", SunMeanLongitude);
  PrintAngle("SunMeanAnomaly@Sun", SunMeanAnomaly);
  PrintNumber("EarthEccentricity", EarthEccentricity);
  PrintAngle("SunEquationOfCentre", SunEquationOfCentre);
  PrintAngle("SunTrueAnomaly", SunTrueAnomaly);
  PrintAngle("SunTrueLongitude", SunTrueLongitude);
  PrintAngle("SunApparentLongitude", SunApparentLongitude);
  PrintAngle("Obliquity@Sun", Obliquity);
  PrintAngle("SunRightAscension", SunRightAscension);
  PrintNumber("SunDeclination", SunDeclination);
}

void PrintMoon() {
  PrintAngle("MoonMeanLongitude", MoonMeanLongitude);
  PrintAngle("MoonMeanAnomaly@Moon", MoonMeanAnomaly);
  PrintNumber("MoonElongation", MoonElongation);
  PrintNumber("MoonArgLatitude", MoonArgLatitude);
  PrintAngle("MoonNodeLongitude", MoonNodeLongitude);
  PrintAngle("SunMeanAnomaly@Moon", SunMeanAnomaly);
  PrintAngle("MoonLongitude", MoonLongitude);
  PrintAngle("MoonLatitude", MoonLatitude);
  PrintNumber("MoonParallax", MoonParallax);
  PrintAngle("Obliquity@Moon", Obliquity);
  PrintAngle("MoonRightAscension", MoonRightAscension);
  PrintNumber("MoonDeclination", MoonDeclination);
}

void PrintPhases() {
  PrintNumber("Illumination", Illumination);
  PrintNumber("YearPercent", YearPercent);
  PrintNumber("NewMoonJD", NewMoonJD);
  PrintNumber("FullMoonJD", FullMoonJD);
  PrintNumber("WaningFlag", WaningFlag);
  PrintAngle("SunMeanAnomaly@Phases", SunMeanAnomaly);
  PrintAngle("MoonMeanAnomaly@Phases", MoonMeanAnomaly);
}

void PrintCalendar() {
  PrintNumber("CalWholeDays", CalWholeDays);
  PrintNumber("CalDayPart", CalDayPart);
  PrintNumber("CalYear", CalYear);
  PrintNumber("CalMonth", CalMonth);
  PrintNumber("CalDay", CalDay);
  PrintNumber("CalHour", CalHour);
  PrintNumber("CalMinute", CalMinute);
}

void PrintModuleResults(double jd) {
  std::printf("%.17g", jd);
  Centuries = JulianCenturies(jd);
  PrintNumber("Centuries", Centuries);
  SunPosition(jd);
  PrintSun();
  MoonPosition(jd);
  PrintMoon();
  JulianToCivil(jd);
  PrintCalendar();
  auto year = static_cast<std::int16_t>(CalYear);
  auto month = static_cast<std::int16_t>(CalMonth);
  std::int16_t yearOfJanuary = year;
  std::int16_t january = 1;
  const std::int16_t calendarYear = year;
  PrintNumber("CivilToJulian", CivilToJulian(year, month, CalDay + CalDayPart));
  FindPhases(calendarYear, jd, CivilToJulian(yearOfJanuary, january, 1));
  PrintPhases();
  PrintNumber("ArcSine", ArcSine(CalDayPart * 0.999));
  PrintNumber("DegToRad", DegToRad(jd));
  std::printf("\n");
}

void PrintReport(double jd, double offsetMinutes, bool southern) {
  OffsetMinutes = offsetMinutes;
  support::ReportStage stage({static_cast<double>(static_cast<std::int64_t>((jd - 2415018.5) * 1440)) / 1440});
  stage.form.southernView = southern;
  UpdateMoonReport();
  std::printf("report %.17g", jd);
  for (const std::wstring& line : stage.form.lines) {
    PrintText("line", line);
  }
  PrintText("tip", {TrayIconData.szTip.begin(), TrayIconData.szTip.end()});
  PrintText("label1", stage.form.label1);
  PrintText("icon", std::to_wstring(tidewell::IcoNumFromIconNumber()));
  std::printf("\n");
}

void PrintEverything() {
  Generator generator;
  for (int i = 0; i < kInstants; ++i) {
    PrintModuleResults(kFirstDay + generator.Next() * (kLastDay - kFirstDay));
  }
  for (int i = 0; i < kReports; ++i) {
    const double jd = kFirstDay + generator.Next() * (kLastDay - kFirstDay);
    PrintReport(jd, 15 * (i % 97 - 48), i % 2 != 0);
  }
}

}  // namespace

}  // namespace mMoon

int main() { mMoon::PrintEverything(); }
