#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <set>
#include <vector>

#include "astro/mMoon.h"
#include "support/module_test.h"
#include "support/tsv.h"

// Compares the program with a modern ephemeris, in dynamical time. The bounds are those of docs/accuracy.md.
// The build makes the reference files (tests/oracle/ephemeris.cpp).

namespace mMoon {

namespace {

using AccuracyTest = support::ModuleTest;

double RootMeanSquare(const std::vector<double>& errors) {
  return std::sqrt(std::inner_product(errors.begin(), errors.end(), errors.begin(), 0.0) /
                   static_cast<double>(errors.size()));
}

double JanuaryFirst(std::int16_t year) {
  std::int16_t month = 1;
  return CivilToJulian(year, month, 1);
}

/// Julian days of the phases found, each once.
struct FoundPhases {
  std::set<double> newMoons, movedOnNewMoons, fullMoons;
};

/// Runs the finder for every day as the report does, from a month before 1900 to the end of 2100.
FoundPhases FindOnEveryDay() {
  FoundPhases found;
  double day = JanuaryFirst(1900) - 31;
  for (std::int16_t year = 1899; year <= 2100; ++year) {
    const double january = JanuaryFirst(year);
    const auto nextYear = static_cast<std::int16_t>(year + 1);
    for (const double nextJanuary = JanuaryFirst(nextYear); day < nextJanuary; ++day) {
      FindPhases(year, day, january);
      // A New Moon comes after its Full Moon only if it was moved on.
      (NewMoonJD < FullMoonJD ? found.newMoons : found.movedOnNewMoons).insert(NewMoonJD);
      found.fullMoons.insert(FullMoonJD);
    }
  }
  return found;
}

/// Compares the phases found with a column of the reference file, 1900 to 2100. `rms` is the measured error in minutes:
/// unlike the largest error, it shows a wrong last digit of a coefficient.
void HoldToReference(const char* quantity, const std::set<double>& found, const std::vector<support::TsvRow>& rows,
                     const char* column, double rms) {
  SCOPED_TRACE(quantity);
  std::vector<double> errors;
  for (const support::TsvRow& row : rows) {
    const double want = row.Number(column);
    if (want < JanuaryFirst(1900) || want >= JanuaryFirst(2101)) {
      continue;
    }
    const auto got = found.lower_bound(want - 14);  // the nearest: the next one is 29 days later
    ASSERT_NE(got, found.end()) << "lunation " << row.Text("lunation");
    const double minutes = (*got - want) * 1440;
    EXPECT_NEAR(minutes, 0, 3.5) << "lunation " << row.Text("lunation");
    errors.push_back(minutes);
  }
  EXPECT_EQ(std::ssize(errors),
            std::distance(found.lower_bound(JanuaryFirst(1900)), found.lower_bound(JanuaryFirst(2101))));
  EXPECT_NEAR(RootMeanSquare(errors), rms, 0.5e-3);
}

}  // namespace

TEST_F(AccuracyTest, NoPhaseOf1900To2100IsMoreThanThreeAndAHalfMinutesOff) {
  const auto rows = support::ReadTsv("ephemeris_phases.tsv");
  const FoundPhases found = FindOnEveryDay();
  HoldToReference("New Moons", found.newMoons, rows, "new moon", 1.101);
  HoldToReference("New Moons moved on", found.movedOnNewMoons, rows, "new moon", 1.101);
  HoldToReference("Full Moons", found.fullMoons, rows, "full moon", 1.068);
}

TEST_F(AccuracyTest, TheLitFractionIsWithinFourThousandths) {
  const auto rows = support::ReadTsv("ephemeris_lit_fractions.tsv");
  ASSERT_EQ(rows.size(), 1188U);
  std::vector<double> errors;
  for (const support::TsvRow& row : rows) {
    const double jd = row.Number("jd");
    Centuries = JulianCenturies(jd);
    SunPosition(jd);
    MoonPosition(jd);
    FindPhases(1900, jd, JanuaryFirst(1900));
    EXPECT_NEAR(Illumination, row.Number("lit"), 0.004) << "JD " << row.Text("jd");
    errors.push_back(Illumination - row.Number("lit"));
  }
  EXPECT_NEAR(RootMeanSquare(errors), 0.001085, 0.5e-6);
}

}  // namespace mMoon
