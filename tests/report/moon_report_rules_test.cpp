// The rules of the report. The stand-in for the phase finder also gives phases that the sky never has.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "report/settings.h"
#include "support/closeness.h"
#include "support/module_test.h"
#include "support/raises.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"
#include "tray/tray_icon_record.h"

namespace {

/// What a call of FindPhases finds.
struct PhasesAnswer {
  double newMoon, fullMoon;  // Julian days
  double illumination = 0.25;
  std::int16_t waning = 0;
};

struct PhasesCall {
  std::int16_t year;
  double jd, jdJan1;
  double centuries;  // of the positions computed before the call
};

/// Gives one answer after another, then repeats the last one.
struct PhasesStandIn {
  static inline std::vector<PhasesAnswer> answers;
  static inline std::vector<PhasesCall> calls;
};

}  // namespace

// astro/phases.cpp defines nothing else, so the linker leaves that file out.
void mMoon::FindPhases(std::int16_t year, double jd, double jdJan1) {
  const auto index = std::min(PhasesStandIn::calls.size(), PhasesStandIn::answers.size() - 1);
  const PhasesAnswer& answer = PhasesStandIn::answers.at(index);
  PhasesStandIn::calls.push_back({.year = year, .jd = jd, .jdJan1 = jdJan1, .centuries = Centuries});
  Illumination = answer.illumination;
  WaningFlag = answer.waning;
  NewMoonJD = answer.newMoon;
  FullMoonJD = answer.fullMoon;
}

using runtime::DateValue;
using support::Raises;
using support::ReportStage;
using support::Same;

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

using Written = std::vector<std::pair<std::size_t, std::wstring>>;

DateValue Local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return runtime::AddTime(runtime::DateSerial(year, month, day), hour, minute, second);
}

/// The Julian day of an instant in Universal Time, half a minute later, so that the minute survives rounding.
double Instant(int year, int month, int day, int hour = 0, int minute = 0) {
  return Local(year, month, day, hour, minute, 30) + 2415018.5;
}

/// The present of most tests, between the phases below.
const DateValue kNow = Local(2003, 8, 19, 12);
const PhasesAnswer kComing = {.newMoon = Instant(2003, 8, 27, 17, 26), .fullMoon = Instant(2003, 9, 10, 16, 35)};
const PhasesAnswer kPrevious = {.newMoon = Instant(2003, 7, 29, 6, 52), .fullMoon = Instant(2003, 8, 12, 4, 47)};

class ReportRulesTest : public support::ModuleTest {
 protected:
  ReportRulesTest() {
    PhasesStandIn::calls.clear();
    PhasesStandIn::answers = {kComing, kPrevious};
  }

  static std::wstring Tip() { return {TrayIconData.szTip.begin(), TrayIconData.szTip.end()}; }

  /// The tip for an age in days, without its padding. The report reads the clock again for it.
  static std::wstring TipForAge(double age) {
    PhasesStandIn::calls.clear();
    PhasesStandIn::answers = {kComing, {.newMoon = Instant(2003, 7, 29, 0, 0), .fullMoon = kPrevious.fullMoon}};
    const ReportStage stage({kNow, kNow, Local(2003, 7, 29) + age});
    UpdateMoonReport();
    EXPECT_EQ(Tip().size(), 64U);
    return Tip().substr(0, Tip().find_last_not_of(L' ') + 1);
  }
};

}  // namespace

TEST_F(ReportRulesTest, WritesTheEarlierEventAboveAndTheFullLineFirst) {
  {
    const ReportStage stage({kNow});
    UpdateMoonReport();
    EXPECT_EQ(stage.form.written, (Written{{3, L"Next Full Moon : 10-Sep-03 4:35 PM"},
                                           {2, L"Next New Moon : 27-Aug-03 5:26 PM"},
                                           {1, L"Last Full Moon : 12-Aug-03 4:47 AM"},
                                           {0, L"Last New Moon : 29-Jul-03 6:52 AM"}}));
  }
  PhasesStandIn::calls.clear();
  PhasesStandIn::answers = {{.newMoon = kComing.fullMoon, .fullMoon = kComing.newMoon},
                            {.newMoon = kPrevious.fullMoon, .fullMoon = kPrevious.newMoon}};
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(stage.form.written, (Written{{2, L"Next Full Moon : 27-Aug-03 5:26 PM"},
                                         {3, L"Next New Moon : 10-Sep-03 4:35 PM"},
                                         {0, L"Last Full Moon : 29-Jul-03 6:52 AM"},
                                         {1, L"Last New Moon : 12-Aug-03 4:47 AM"}}));
}

TEST_F(ReportRulesTest, TheCalendarVariablesHoldTheLastConvertedNewMoon) {
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_TRUE(Same(7, CalMonth));
  EXPECT_TRUE(Same(29, CalDay));
  EXPECT_EQ(CalHour, 6);
  EXPECT_EQ(CalMinute, 52);
}

TEST_F(ReportRulesTest, IfBothDatesAreEqualTheNewLineStandsAbove) {
  PhasesStandIn::answers = {{.newMoon = kComing.newMoon, .fullMoon = kComing.newMoon}};
  const ReportStage stage({Local(2003, 8, 1)});
  UpdateMoonReport();
  ASSERT_GE(stage.form.written.size(), 2U);
  EXPECT_EQ(stage.form.written.at(0), (Written::value_type{3, L"Next Full Moon : 27-Aug-03 5:26 PM"}));
  EXPECT_EQ(stage.form.written.at(1), (Written::value_type{2, L"Next New Moon : 27-Aug-03 5:26 PM"}));
}

TEST_F(ReportRulesTest, ComputesForThePresentAndFor30DaysBeforeTheNearerPhase) {
  const ReportStage stage({kNow});
  UpdateMoonReport();
  ASSERT_EQ(PhasesStandIn::calls.size(), 2U);
  // The positions take the clock's reading as Universal Time, the finder its day at 0 h.
  EXPECT_TRUE(Same(JulianCenturies(2452871.0), PhasesStandIn::calls.at(0).centuries));
  EXPECT_EQ(PhasesStandIn::calls.at(0).year, 2003);
  EXPECT_TRUE(Same(2452870.5, PhasesStandIn::calls.at(0).jd));
  EXPECT_TRUE(Same(2452640.5, PhasesStandIn::calls.at(0).jdJan1));
  // 27 August 17:26 less 30 days is 28 July 17:26.
  EXPECT_TRUE(Same(JulianCenturies(2452848.5 + (17 * 60 + 26) / 1440.0), PhasesStandIn::calls.at(1).centuries));
  EXPECT_TRUE(Same(2452848.5, PhasesStandIn::calls.at(1).jd));
}

TEST_F(ReportRulesTest, TheNearerPhaseMayBeTheFullMoon) {
  PhasesStandIn::answers = {{.newMoon = kComing.fullMoon, .fullMoon = kComing.newMoon}, kPrevious};
  const ReportStage stage({kNow});
  UpdateMoonReport();
  ASSERT_EQ(PhasesStandIn::calls.size(), 2U);
  EXPECT_TRUE(Same(2452848.5, PhasesStandIn::calls.at(1).jd));
}

TEST_F(ReportRulesTest, TheOffsetIsAppliedOnTheWayOutOnly) {
  OffsetMinutes = 330;
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_TRUE(Same(JulianCenturies(2452871.0), PhasesStandIn::calls.at(0).centuries));
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 27-Aug-03 10:56 PM");
}

TEST_F(ReportRulesTest, TheOffsetCarriesOverMidnight) {
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 8, 27, 20, 0), .fullMoon = kComing.fullMoon}};
  OffsetMinutes = 330;
  {
    const ReportStage stage({kNow});
    UpdateMoonReport();
    EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 28-Aug-03 1:30 AM");
  }
  PhasesStandIn::calls.clear();
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 9, 1, 2, 0), .fullMoon = kComing.fullMoon}};
  OffsetMinutes = -300;
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 31-Aug-03 9:00 PM");
}

TEST_F(ReportRulesTest, MinuteWithOffsetIsRoundedHalfToEven) {
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 8, 27, 17, 30), .fullMoon = Instant(2003, 9, 10, 16, 31)}};
  OffsetMinutes = 0.5;
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 27-Aug-03 5:30 PM");
  EXPECT_EQ(stage.form.lines.at(3), L"Next Full Moon : 10-Sep-03 4:32 PM");
}

// JulianToCivil gives hour 24, minute 59 in the last moment of a day.
TEST_F(ReportRulesTest, Hour24CarriesIntoTheNextDay) {
  PhasesStandIn::answers = {{.newMoon = 2452878.5 + 23.99999 / 24, .fullMoon = kComing.fullMoon}};
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 28-Aug-03 12:59 AM");
}

TEST_F(ReportRulesTest, APassedPhaseIsSoughtAgainFiveDaysLater) {
  const PhasesAnswer passed = {.newMoon = Instant(2003, 8, 19, 11, 59), .fullMoon = kPrevious.fullMoon + 29};
  PhasesStandIn::answers = {passed, kComing, kPrevious};
  const ReportStage stage({kNow});
  UpdateMoonReport();
  ASSERT_EQ(PhasesStandIn::calls.size(), 3U);
  EXPECT_TRUE(Same(JulianCenturies(2452876.0), PhasesStandIn::calls.at(1).centuries));
  EXPECT_TRUE(Same(2452875.5, PhasesStandIn::calls.at(1).jd));
  EXPECT_TRUE(Same(2452848.5, PhasesStandIn::calls.at(2).jd));  // from the second pass
  EXPECT_EQ(stage.form.lines.at(2), L"New New Moon : 27-Aug-03 5:26 PM");
  EXPECT_EQ(stage.form.lines.at(3), L"New Full Moon : 10-Sep-03 4:35 PM");
  EXPECT_EQ(stage.form.lines.at(0), L"Last New Moon : 29-Jul-03 6:52 AM");
  // The first lines were written, then overwritten.
  EXPECT_EQ(stage.form.written.at(1).second, L"Next New Moon : 19-Aug-03 11:59 AM");
  EXPECT_EQ(stage.form.written.size(), 6U);
}

TEST_F(ReportRulesTest, APhaseAtThisVeryMomentHasPassed) {
  const double now = Instant(2003, 8, 19, 12, 0);
  const double later = Instant(2003, 8, 19, 12, 1);
  for (const auto& [newMoon, fullMoon, passed] : {std::tuple{now, kComing.fullMoon, true},
                                                  {kComing.newMoon, now, true},
                                                  {later, kComing.fullMoon, false},
                                                  {kComing.newMoon, later, false}}) {
    PhasesStandIn::calls.clear();
    PhasesStandIn::answers = {{.newMoon = newMoon, .fullMoon = fullMoon}, kComing, kPrevious};
    const ReportStage stage({kNow});
    UpdateMoonReport();
    EXPECT_EQ(PhasesStandIn::calls.size(), passed ? 3U : 2U);
    EXPECT_EQ(stage.form.lines.at(2).starts_with(L"New "), passed);
  }
}

TEST_F(ReportRulesTest, ReadsTheClockAgainToSeeWhetherAPhaseHasPassed) {
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 8, 19, 12, 1), .fullMoon = kComing.fullMoon}, kComing, kPrevious};
  const ReportStage stage({kNow, Local(2003, 8, 19, 12, 1), kNow});
  UpdateMoonReport();
  ASSERT_EQ(PhasesStandIn::calls.size(), 3U);
  EXPECT_TRUE(Same(JulianCenturies(2452876.0 + 1.0 / 1440), PhasesStandIn::calls.at(1).centuries));
}

// CivilToJulian changes January and February in its arguments, so the report passes copies.
TEST_F(ReportRulesTest, JanuaryAndFebruaryKeepTheirYear) {
  PhasesStandIn::answers = {{.newMoon = Instant(2004, 2, 20), .fullMoon = Instant(2004, 3, 6)}};
  const ReportStage stage({Local(2004, 2, 15, 6)});
  UpdateMoonReport();
  EXPECT_EQ(PhasesStandIn::calls.at(0).year, 2004);
  EXPECT_TRUE(Same(2453050.5, PhasesStandIn::calls.at(0).jd));
  EXPECT_TRUE(Same(2453005.5, PhasesStandIn::calls.at(0).jdJan1));
  EXPECT_TRUE(Same(2453005.5, YearStartJD));
}

TEST_F(ReportRulesTest, EachPassHasTheYearOfItsBaseInstant) {
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 12, 30, 1, 0), .fullMoon = Instant(2004, 1, 7)},
                            {.newMoon = Instant(2004, 1, 21), .fullMoon = Instant(2004, 1, 7)},
                            kPrevious};
  const ReportStage stage({Local(2003, 12, 30, 6)});
  UpdateMoonReport();
  ASSERT_EQ(PhasesStandIn::calls.size(), 3U);
  EXPECT_EQ(PhasesStandIn::calls.at(1).year, 2004);
  EXPECT_TRUE(Same(2453005.5, PhasesStandIn::calls.at(1).jdJan1));
  EXPECT_EQ(PhasesStandIn::calls.at(2).year, 2003);
  EXPECT_TRUE(Same(2452640.5, PhasesStandIn::calls.at(2).jdJan1));
}

TEST_F(ReportRulesTest, PictureAndIconBelongToThePresent) {
  PhasesStandIn::answers = {{kComing.newMoon, kComing.fullMoon, 0.75, 1},
                            {kPrevious.newMoon, kPrevious.fullMoon, 1, 0}};
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(stage.form.label1, L"0.250000");
  EXPECT_EQ(stage.form.drawing.Primitives().size(), 5U);
  EXPECT_EQ(IconNumber, 19);
}

TEST_F(ReportRulesTest, TipTellsTheAge) {
  for (const auto& [age, text] : std::vector<std::pair<double, std::wstring>>{
           {9.5, L"9 Days 12:00"},
           {0.25, L"0 Days 6:00"},
           {3, L"3 Days 0:00"},
           {12.325, L"12 Days 7:48"},  // 0.325 days are a hair below 7:48:00
           {29.75, L"29 Days 18:00"},
           // The days come from the text with three decimals.
           {5.9996, L"6 Days 23:59"},
           {5.9994, L"5 Days 23:59"},
           // They are its first two characters: -8.525 gives "-0", -16.025 gives "-1". The hours ignore the sign.
           {-0.25, L"0 Days 6:00"},
           {-0.28125, L"0 Days 6:45"},
           {-8.525, L"0 Days 12:36"},
           {-9.9996, L"-1 Days 23:59"},
           {-16.025, L"-1 Days 0:36"}}) {
    EXPECT_EQ(TipForAge(age), L"Moon's Age - " + text);
  }
}

TEST_F(ReportRulesTest, TipHasTheSameDaysInEveryLocale) {
  const ReportStage stage({kNow});
  ReportStage::locale.decimalSeparator = L",";
  UpdateMoonReport();
  EXPECT_TRUE(Tip().starts_with(L"Moon's Age - 21 Days 5:08 "));
  EXPECT_EQ(stage.form.label1, L"0,750000");
}

TEST_F(ReportRulesTest, TipLeavesTheOtherFieldsOfItsRecordAlone) {
  TrayIconData.cbSize = 88;
  TrayIconData.hIcon = 12345;
  const ReportStage stage({kNow});
  UpdateMoonReport();
  EXPECT_EQ(TrayIconData.cbSize, 88U);
  EXPECT_EQ(TrayIconData.hIcon, 12345U);
}

TEST_F(ReportRulesTest, LinesHaveTheLocalesWords) {
  const ReportStage stage({kNow});
  ReportStage::locale.abbreviatedMonths.at(7) = L"ao\u00FBt";
  ReportStage::locale.am = L"";
  ReportStage::locale.pm = L"";
  UpdateMoonReport();
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 27-ao\u00FBt-03 5:26 PM");
  EXPECT_EQ(stage.form.lines.at(1), L"Last Full Moon : 12-ao\u00FBt-03 4:47 AM");
}

TEST_F(ReportRulesTest, AMinuteBeyond16BitsOverflows) {
  PhasesStandIn::answers = {kComing};
  OffsetMinutes = 32767 - 35;  // the Full Moon's minute just fits
  {
    const ReportStage stage({kNow});
    UpdateMoonReport();
    EXPECT_EQ(stage.form.lines.at(3), L"Next Full Moon : 03-Oct-03 10:07 AM");
  }
  PhasesStandIn::calls.clear();
  NextPhasesShown = True;
  OffsetMinutes += 1;
  const ReportStage stage({kNow});
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { UpdateMoonReport(); }));
  EXPECT_TRUE(stage.form.written.empty());
  EXPECT_EQ(NextPhasesShown, False);
  // The picture is drawn before the error.
  EXPECT_EQ(stage.form.label1, L"0.750000");
}

TEST_F(ReportRulesTest, LinesWrittenBeforeAnErrorKeepTheirNewText) {
  PhasesStandIn::answers = {{.newMoon = Instant(2003, 8, 27, 17, 26), .fullMoon = Instant(2003, 9, 10, 16, 35)},
                            {.newMoon = Instant(2003, 7, 29, 6, 40), .fullMoon = kPrevious.fullMoon}};
  OffsetMinutes = 32767 - 39;
  ReportStage stage({kNow});
  stage.form.lines.fill(L"old");
  const auto tip = TrayIconData.szTip;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { UpdateMoonReport(); }));
  EXPECT_EQ(stage.form.lines.at(0), L"old");
  EXPECT_EQ(stage.form.lines.at(1), L"old");
  EXPECT_TRUE(stage.form.lines.at(2).starts_with(L"Next New Moon : 19-Sep-03 "));
  EXPECT_TRUE(stage.form.lines.at(3).starts_with(L"Next Full Moon : 03-Oct-03 "));
  EXPECT_EQ(NextPhasesShown, True);
  EXPECT_EQ(TrayIconData.szTip, tip);
}

TEST_F(ReportRulesTest, APhaseBeyondTheCalendarIsAnInvalidArgument) {
  PhasesStandIn::answers = {{.newMoon = kComing.newMoon, .fullMoon = 1e7}};
  const ReportStage stage({kNow});
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { UpdateMoonReport(); }));
  PhasesStandIn::answers = {{.newMoon = kComing.newMoon, .fullMoon = 1e8}};  // a year beyond 16 bits
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { UpdateMoonReport(); }));
}

}  // namespace tidewell
