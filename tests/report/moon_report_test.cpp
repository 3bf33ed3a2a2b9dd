#include "report/moon_report.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "astro/mMoon.h"
#include "support/module_test.h"
#include "support/raises.h"
#include "support/report_stage.h"
#include "support/tsv.h"
#include "tray/icon_number.h"
#include "tray/shell_record.h"

using support::Raises;
using support::ReportStage;

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

using MoonReportTest = support::ModuleTest;
using Written = std::vector<std::pair<std::size_t, std::wstring>>;

DateValue Local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return runtime::AddTime(runtime::DateSerial(year, month, day), hour, minute, second);
}

/// The present of most tests. New Moons: 29 July 6:53, 27 August 17:26, 26 September. Full Moons: 12 August 4:47,
/// 10 September 16:35.
const DateValue kNow = Local(2003, 8, 19, 12);
const DateValue kNewMoon = Local(2003, 8, 27, 17, 26);
const DateValue kFullMoon = Local(2003, 9, 10, 16, 35);

/// The clock's reading for a text such as "2003-08-19T12:00:00".
DateValue Moment(const std::string& text) {
  const auto part = [&](std::size_t position, std::size_t length) { return std::stoi(text.substr(position, length)); };
  return Local(part(0, 4), part(5, 2), part(8, 2), part(11, 2), part(14, 2), part(17, 2));
}

std::wstring Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

std::wstring Tip() { return {TrayIconData.szTip.begin(), TrayIconData.szTip.end()}; }

std::wstring PaddedTip(std::wstring text) {
  text.resize(64, L' ');
  return text;
}

/// The lines that a report writes if the clock gives these readings, in the order of writing.
Written LinesAt(std::vector<DateValue> readings) {
  const ReportStage stage(std::move(readings));
  UpdateMoonReport();
  return stage.form.written;
}

}  // namespace

// The reference file comes from the independent oracle in Python.
TEST_F(MoonReportTest, AgreesWithTheReferenceFile) {
  const auto rows = support::ReadTsv("report_lines.tsv");
  ASSERT_GE(rows.size(), 1000U);
  for (const support::TsvRow& row : rows) {
    SCOPED_TRACE(row.Text("local") + ", offset " + row.Text("offset"));
    support::ResetModule();
    OffsetMinutes = row.Number("offset");
    ReportStage stage({Moment(row.Text("local"))});
    stage.form.southernView = row.Whole("southern") != 0;
    UpdateMoonReport();

    for (std::size_t line = 0; line < 4; ++line) {
      EXPECT_EQ(stage.form.lines.at(line), Wide(row.Text("line" + std::to_string(line))));
    }
    EXPECT_EQ(Tip(), PaddedTip(Wide(row.Text("tip"))));
    EXPECT_EQ(stage.form.label1, Wide(row.Text("label1")));
    EXPECT_EQ(IconNumber, static_cast<float>(row.Whole("icon")));
    EXPECT_EQ(IcoNumFromIconNumber(), row.Whole("icon"));
  }
}

TEST_F(MoonReportTest, WritesTheFullLineFirstAndTheEarlierPhaseAbove) {
  EXPECT_EQ(LinesAt({kNow}), (Written{{3, L"Next Full Moon : 10-Sep-03 4:35 PM"},
                                      {2, L"Next New Moon : 27-Aug-03 5:26 PM"},
                                      {1, L"Last Full Moon : 12-Aug-03 4:47 AM"},
                                      {0, L"Last New Moon : 29-Jul-03 6:53 AM"}}));
  EXPECT_EQ(LinesAt({kNow + 10}), (Written{{2, L"Next Full Moon : 10-Sep-03 4:35 PM"},
                                           {3, L"Next New Moon : 26-Sep-03 3:09 AM"},
                                           {0, L"Last Full Moon : 12-Aug-03 4:47 AM"},
                                           {1, L"Last New Moon : 27-Aug-03 5:26 PM"}}));
}

TEST_F(MoonReportTest, OverwritesTheLinesOfAPhaseThatHasPassed) {
  EXPECT_EQ(LinesAt({kNewMoon}), (Written{{3, L"Next Full Moon : 10-Sep-03 4:35 PM"},
                                          {2, L"Next New Moon : 27-Aug-03 5:26 PM"},
                                          {2, L"New Full Moon : 10-Sep-03 4:35 PM"},
                                          {3, L"New New Moon : 26-Sep-03 3:09 AM"},
                                          {0, L"Last Full Moon : 12-Aug-03 4:47 AM"},
                                          {1, L"Last New Moon : 27-Aug-03 5:26 PM"}}));
  EXPECT_EQ(LinesAt({kFullMoon}).size(), 6U);
  EXPECT_EQ(LinesAt({AddTime(kNewMoon, 0, -1)}).size(), 4U);
  EXPECT_EQ(LinesAt({AddTime(kFullMoon, 0, -1)}).size(), 4U);
}

TEST_F(MoonReportTest, ReadsTheClockAgainToSeeWhetherAPhaseHasPassed) {
  const Written lines = LinesAt({kNow, kNow + 50});
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines.at(2).second, L"New Full Moon : 09-Nov-03 1:15 AM");
}

// CivilToJulian changes January and February in its arguments, so the report passes copies.
TEST_F(MoonReportTest, LeavesTheVariablesOfTheLastPass) {
  LinesAt({Local(2004, 2, 15, 6)});
  // 30 days before the New Moon of 20 February 9:20.
  EXPECT_NEAR(Centuries, JulianCenturies(2453025.5 + (9 * 60 + 20) / 1440.0), 0);
  EXPECT_NEAR(YearStartJD, 2453005.5, 0);
  // The New Moon is the last date converted.
  EXPECT_EQ(CalMonth, 1);
  EXPECT_EQ(CalDay, 21);
  EXPECT_EQ(CalHour, 21);
  EXPECT_EQ(CalMinute, 7);
}

// JulianToCivil gives hour 24, minute 59 in the last moment of a day: this Full Moon comes 3.6 ms before midnight.
TEST_F(MoonReportTest, Hour24CarriesIntoTheNextDay) {
  EXPECT_EQ(LinesAt({Local(7701, 4, 25, 12)}).at(0).second, L"Next Full Moon : 01-Jul-01 12:59 AM");
}

TEST_F(MoonReportTest, TipTellsTheAge) {
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
    LinesAt({kNow, kNow, Local(2003, 7, 29, 6, 53) + age});  // the report reads the clock again for it
    EXPECT_EQ(Tip(), PaddedTip(L"Moon's Age - " + text));
  }
}

TEST_F(MoonReportTest, HasTheLocalesWords) {
  const ReportStage stage({kNow});
  ReportStage::locale.decimalSeparator = L",";
  ReportStage::locale.abbreviatedMonths.at(7) = L"ao\u00FBt";
  ReportStage::locale.am = L"";
  ReportStage::locale.pm = L"";
  UpdateMoonReport();
  EXPECT_EQ(stage.form.lines.at(2), L"Next New Moon : 27-ao\u00FBt-03 5:26 PM");
  EXPECT_EQ(stage.form.lines.at(1), L"Last Full Moon : 12-ao\u00FBt-03 4:47 AM");
  EXPECT_EQ(stage.form.label1, L"0,448615");
  EXPECT_EQ(Tip(), PaddedTip(L"Moon's Age - 21 Days 5:07"));
}

TEST_F(MoonReportTest, AMinuteBeyond16BitsOverflows) {
  OffsetMinutes = 32767 - 35;  // the Full Moon's minute just fits
  EXPECT_EQ(LinesAt({kNow}).at(0).second, L"Next Full Moon : 03-Oct-03 10:07 AM");
  OffsetMinutes += 1;
  const ReportStage stage({kNow});
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { UpdateMoonReport(); }));
  EXPECT_TRUE(stage.form.written.empty());
  EXPECT_EQ(NextPhasesShown, False);
  EXPECT_EQ(stage.form.label1, L"0.448615") << "the picture is drawn before the error";
}

TEST_F(MoonReportTest, LinesWrittenBeforeAnErrorKeepTheirNewText) {
  OffsetMinutes = -32768 - 26;  // the minutes 26 and 35 fit, but not that of the Full Moon of 13 July 19:20
  ReportStage stage({kNow});
  stage.form.lines.fill(L"old");
  const auto tip = TrayIconData.szTip;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { UpdateMoonReport(); }));
  EXPECT_EQ(stage.form.lines, (std::array<std::wstring, 4>{L"old", L"old", L"New New Moon : 04-Aug-03 10:52 PM",
                                                           L"New Full Moon : 18-Aug-03 10:01 PM"}));
  EXPECT_EQ(NextPhasesShown, True);
  EXPECT_EQ(TrayIconData.szTip, tip);
}

TEST_F(MoonReportTest, APhaseBeyondTheCalendarIsAnInvalidArgument) {
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { LinesAt({Local(9999, 12, 31)}); }));
}

TEST(Surroundings, RefuseAFormOrAClockThatWasNotSet) {
  const Surroundings nothing;
  EXPECT_TRUE(Raises(ErrorNumber::InternalError, [&] { static_cast<void>(nothing.Form()); }));
  EXPECT_TRUE(Raises(ErrorNumber::InternalError, [&] { nothing.Now(); }));
}

}  // namespace tidewell
