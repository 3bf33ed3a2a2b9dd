#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <set>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/tsv.h"

// Compares the program with a modern ephemeris, in dynamical time. The bounds are those of docs/accuracy.md.
// tools/accuracy/accuracy.py makes the reference files.

using support::Near;
using support::Prints;

namespace mMoon {

namespace {

using AccuracyTest = support::ModuleTest;

/// Collects the errors of one quantity and prints their size when it is destroyed.
class Errors {
 public:
  explicit Errors(const char* quantity) : quantity_(quantity) {}
  Errors(const Errors&) = delete;
  Errors& operator=(const Errors&) = delete;
  ~Errors() { std::printf("  %-28s %5d, rms error %.4g, largest error %.4g\n", quantity_, count_, Rms(), largest_); }

  void See(double error) {
    ++count_;
    squares_ += error * error;
    largest_ = std::max(largest_, std::fabs(error));
  }
  [[nodiscard]] int Count() const { return count_; }
  [[nodiscard]] double Rms() const { return std::sqrt(squares_ / count_); }

 private:
  const char* quantity_;
  int count_ = 0;
  double squares_ = 0;
  double largest_ = 0;
};

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
/// a changed last digit of a coefficient shows there, but not in the largest error.
void HoldToReference(const char* quantity, const std::set<double>& found, const support::Tsv& file, const char* column,
                     double rms) {
  Errors errors(quantity);
  for (const support::TsvRow& row : file.Rows()) {
    const double want = row.Number(column);
    if (want < JanuaryFirst(1900) || want >= JanuaryFirst(2101)) {
      continue;
    }
    const auto got = found.lower_bound(want - 14);  // the nearest: the next one is 29 days later
    ASSERT_NE(got, found.end()) << quantity << ", lunation " << row.Text("lunation");
    const double minutes = (*got - want) * 1440;
    EXPECT_TRUE(Near(0, minutes, 3.5)) << quantity << ", lunation " << row.Text("lunation");
    errors.See(minutes);
  }
  EXPECT_EQ(errors.Count(), std::distance(found.lower_bound(JanuaryFirst(1900)), found.lower_bound(JanuaryFirst(2101))))
      << quantity;
  EXPECT_TRUE(Prints(rms, errors.Rms(), 3)) << quantity;
}

}  // namespace

TEST_F(AccuracyTest, NoPhaseOf1900To2100IsMoreThanThreeAndAHalfMinutesOff) {
  const support::Tsv file("ephemeris_phases.tsv");
  const FoundPhases found = FindOnEveryDay();
  HoldToReference("New Moons, minutes", found.newMoons, file, "new moon", 1.101);
  HoldToReference("New Moons moved on, minutes", found.movedOnNewMoons, file, "new moon", 1.101);
  HoldToReference("Full Moons, minutes", found.fullMoons, file, "full moon", 1.068);
}

TEST_F(AccuracyTest, TheLitFractionIsWithinFourThousandths) {
  const support::Tsv file("ephemeris_lit_fractions.tsv");
  ASSERT_GE(file.Rows().size(), 1000U);
  Errors errors("lit fractions");
  for (const support::TsvRow& row : file.Rows()) {
    const double jd = row.Number("jd");
    Centuries = JulianCenturies(jd);
    SunPosition(jd);
    MoonPosition(jd);
    FindPhases(1900, jd, JanuaryFirst(1900));
    EXPECT_TRUE(Near(row.Number("lit"), Illumination, 0.004)) << "JD " << row.Text("jd");
    errors.See(Illumination - row.Number("lit"));
  }
  EXPECT_TRUE(Prints(0.001085, errors.Rms(), 6));
}

}  // namespace mMoon
