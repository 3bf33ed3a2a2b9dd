#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "support/module_test.h"
#include "support/tsv.h"

namespace mMoon {

using namespace runtime;

namespace {

// Two builds differ in the last bits: each runtime has its own sine, and the program forms the Moon's series from
// multiples of four angles, the file from one sine per row.
constexpr double kTolerance = 5e-11;
constexpr double kJulianDayTolerance = 1e-9;  // two units in the last place

using Values = std::map<std::string, double>;

/// Runs the routines as the report does and keeps each value as its routine left it.
Values Compute(std::int16_t year, std::int16_t month, double dayFraction, double day) {
  const auto julianDay = [](std::int16_t y, std::int16_t m, double d) { return CivilToJulian(y, m, d); };
  const double jd = julianDay(year, month, dayFraction);
  Centuries = JulianCenturies(jd);
  SunPosition(jd);
  Values values = {{"JD", jd},
                   {"Centuries", Centuries},
                   {"SunMeanLongitude", SunMeanLongitude},
                   {"SunMeanAnomaly@Sun", SunMeanAnomaly},
                   {"EarthEccentricity", EarthEccentricity},
                   {"SunEquationOfCentre", SunEquationOfCentre},
                   {"SunTrueAnomaly", SunTrueAnomaly},
                   {"SunTrueLongitude", SunTrueLongitude},
                   {"SunApparentLongitude", SunApparentLongitude},
                   {"Obliquity@Sun", Obliquity},
                   {"SunRightAscension", SunRightAscension},
                   {"SunDeclination", SunDeclination}};
  MoonPosition(jd);
  values.insert({{"MoonMeanLongitude", MoonMeanLongitude},
                 {"MoonMeanAnomaly@Moon", MoonMeanAnomaly},
                 {"MoonElongation", MoonElongation},
                 {"MoonArgLatitude", MoonArgLatitude},
                 {"MoonNodeLongitude", MoonNodeLongitude},
                 {"SunMeanAnomaly@Moon", SunMeanAnomaly},
                 {"MoonLongitude", MoonLongitude},
                 {"MoonLatitude", MoonLatitude},
                 {"MoonParallax", MoonParallax},
                 {"Obliquity@Moon", Obliquity},
                 {"MoonRightAscension", MoonRightAscension},
                 {"MoonDeclination", MoonDeclination}});
  const double jd0 = julianDay(year, month, day);
  YearStartJD = julianDay(year, 1, 1.0);
  FindPhases(year, jd0, YearStartJD);
  values.insert({{"JD0", jd0},
                 {"YearStartJD", YearStartJD},
                 {"Illumination", Illumination},
                 {"YearPercent", YearPercent},
                 {"NewMoonJD", NewMoonJD},
                 {"FullMoonJD", FullMoonJD},
                 {"WaningFlag", WaningFlag},
                 {"SunMeanAnomaly@Phases", SunMeanAnomaly},
                 {"MoonMeanAnomaly@Phases", MoonMeanAnomaly}});
  return values;
}

using ModuleValuesTest = support::ModuleTest;

}  // namespace

// The reference values come from the independent oracle in Python.
TEST_F(ModuleValuesTest, AgreeWithTheReferenceFile) {
  const auto rows = support::ReadTsv("module_values.tsv");
  ASSERT_GE(rows.size(), 200U);
  for (const support::TsvRow& row : rows) {
    const auto part = [&](const char* name) { return static_cast<std::int16_t>(row.Whole(name)); };
    const std::int16_t day = part("day");
    const Values values =
        Compute(part("year"), part("month"), DayFraction(day, part("hour"), part("minute")), DayFraction(day, 0, 0));
    ASSERT_EQ(values.size() + 5, row.cells.size());
    for (const auto& [name, got] : values) {
      const double want = row.Number(name);
      EXPECT_NEAR(got, want, want > 1e6 ? kJulianDayTolerance : kTolerance) << name << ", " << row.Text("JD");
    }
  }
}

}  // namespace mMoon
