#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "astro/mMoon.h"
#include "support/module_test.h"
#include "support/raises.h"
#include "support/tsv.h"

using support::Raises;

namespace mMoon {

using namespace runtime;

using FindPhasesTest = support::ModuleTest;

constexpr double kJanuary2003 = 2452640.5;

// Worked by hand after Meeus, Astronomical Formulae for Calculators, ch. 32, with the departures. 19 August 2003.
TEST_F(FindPhasesTest, GivesTheWorkedValues) {
  MoonElongation = 500;
  FindPhases(2003, 2452870.5, kJanuary2003);
  EXPECT_NEAR(YearPercent, 63.0137, 0.5e-4);
  EXPECT_NEAR(NewMoonJD, 2452879.2269, 0.5e-4);
  EXPECT_NEAR(FullMoonJD, 2452893.1913, 0.5e-4);
  EXPECT_EQ(WaningFlag, 1);
  EXPECT_EQ(MoonElongation, 500);  // untouched
}

// The reference values come from the independent oracle in Python. The tolerance is a few last bits of an angle of 100
// million degrees; it tells the two signs of the Sun's T^2 term apart.
TEST_F(FindPhasesTest, AgreesWithTheReferenceFile) {
  const auto rows = support::ReadTsv("phases.tsv");
  ASSERT_GE(rows.size(), 400U);
  for (const support::TsvRow& row : rows) {
    SCOPED_TRACE(row.Text("year") + ", JD " + row.Text("jd"));
    FindPhases(static_cast<std::int16_t>(row.Whole("year")), row.Number("jd"), row.Number("jdJan1"));
    EXPECT_NEAR(YearPercent, row.Number("YearPercent"), 1e-12);
    EXPECT_NEAR(NewMoonJD, row.Number("NewMoonJD"), 1e-8);
    EXPECT_NEAR(FullMoonJD, row.Number("FullMoonJD"), 1e-8);
    EXPECT_EQ(WaningFlag, row.Whole("WaningFlag"));
    EXPECT_NEAR(SunMeanAnomaly, row.Number("SunMeanAnomaly"), 1e-8);
    EXPECT_NEAR(MoonMeanAnomaly, row.Number("MoonMeanAnomaly"), 1e-8);
  }
}

TEST_F(FindPhasesTest, APhaseExactlyAtTheReferenceDayHasNotPassed) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double newMoon = NewMoonJD;
  const double fullMoon = FullMoonJD;
  FindPhases(2003, newMoon, kJanuary2003);
  EXPECT_NEAR(NewMoonJD, newMoon, 0);
  FindPhases(2003, std::nextafter(newMoon, 3e6), kJanuary2003);
  EXPECT_GT(NewMoonJD, newMoon + 29);

  // A Full Moon that has passed is evaluated again, after the New Moon that was moved on.
  FindPhases(2003, fullMoon, kJanuary2003 + 20);
  const double anomalyOfNewMoon = SunMeanAnomaly;
  FindPhases(2003, std::nextafter(fullMoon, 3e6), kJanuary2003 + 20);
  EXPECT_NEAR(FullMoonJD, fullMoon, 0);
  EXPECT_LT(SunMeanAnomaly, anomalyOfNewMoon - 14);
}

TEST_F(FindPhasesTest, VariablesAssignedBeforeAnErrorKeepTheirNewValues) {
  FindPhases(2003, 2452870.5, kJanuary2003);
  const double newMoon = NewMoonJD;
  const double fullMoon = FullMoonJD;
  const double anomaly = SunMeanAnomaly;
  MoonElongation = 180;
  SunMeanAnomaly = anomaly;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, 1e12, 0); }));
  EXPECT_GT(Illumination, 0.5);
  EXPECT_NEAR(YearPercent, 1e12 / 365 * 100, 0);
  EXPECT_NEAR(NewMoonJD, newMoon, 0);
  EXPECT_NEAR(FullMoonJD, fullMoon, 0);
  EXPECT_NEAR(SunMeanAnomaly, anomaly, 0);
  EXPECT_EQ(WaningFlag, 1);
}

TEST_F(FindPhasesTest, RaisesTheErrorOfAnImpossibleMoment) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  YearPercent = -1;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, kLargest, -kLargest); }));
  EXPECT_EQ(YearPercent, -1);
  EXPECT_NEAR(Illumination, 0, 1e-15);
  MoonElongation = 1e12;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { FindPhases(2003, 2452870.5, kJanuary2003); }));
}

}  // namespace mMoon
