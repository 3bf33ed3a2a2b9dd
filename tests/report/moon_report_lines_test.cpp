#include <gtest/gtest.h>

#include <string>

#include "astro/mMoon.h"
#include "report/moon_report.h"
#include "support/module_test.h"
#include "support/report_stage.h"
#include "support/tsv.h"
#include "tray/icon_number.h"
#include "tray/tray_icon_record.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

using ReportLinesTest = support::ModuleTest;

/// The clock's reading for a text such as "2003-08-19T12:00:00".
runtime::DateValue Moment(const std::string& text) {
  const auto part = [&](std::size_t position, std::size_t length) { return std::stoi(text.substr(position, length)); };
  return runtime::AddTime(runtime::DateSerial(part(0, 4), part(5, 2), part(8, 2)), part(11, 2), part(14, 2),
                          part(17, 2));
}

std::wstring Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

}  // namespace

// The reference file comes from the independent oracle in Python.
TEST_F(ReportLinesTest, AgreeWithTheReferenceFile) {
  const auto rows = support::ReadTsv("report_lines.tsv");
  ASSERT_GE(rows.size(), 50U);
  for (const support::TsvRow& row : rows) {
    SCOPED_TRACE(row.Text("local") + ", offset " + row.Text("offset"));
    support::ResetModule();
    OffsetMinutes = row.Number("offset");
    support::ReportStage stage({Moment(row.Text("local"))});
    stage.form.southernView = row.Whole("southern") != 0;
    UpdateMoonReport();

    for (std::size_t line = 0; line < 4; ++line) {
      EXPECT_EQ(stage.form.lines.at(line), Wide(row.Text("line" + std::to_string(line))));
    }
    std::wstring tip = Wide(row.Text("tip"));
    tip.resize(64, L' ');
    EXPECT_EQ(std::wstring(TrayIconData.szTip.begin(), TrayIconData.szTip.end()), tip);
    EXPECT_EQ(stage.form.label1, Wide(row.Text("label1")));
    EXPECT_EQ(IconNumber, static_cast<float>(row.Whole("icon")));
    EXPECT_EQ(IcoNumFromIconNumber(), row.Whole("icon"));
  }
}

}  // namespace tidewell
