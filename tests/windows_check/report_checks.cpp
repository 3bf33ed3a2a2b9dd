// The report: the program shows the lines, tip and picture that the same code makes here for the same minute.

#include <cmath>

#include "forms/drawing_list_win.h"
#include "report/frmMoon_layout.h"
#include "report/local_time_offset.h"
#include "report/moon_report.h"
#include "runtime/clock.h"
#include "support/report_stage.h"
#include "tray/phase_drawing.h"
#include "tray/shell_record.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

namespace {

namespace layout = tidewell::frmMoonLayout;

struct Report {
  std::wstring text;  ///< of the lines and the dark fraction
  std::wstring tip;
  forms::DrawingList drawing;
};

template <class Lines>
std::wstring Joined(const Lines& lines, const std::wstring& darkFraction) {
  std::wstring text;
  for (const std::wstring& line : lines) {
    text += line + L" | ";
  }
  return text + darkFraction;
}

/// The report of this minute. Before the program's first tick it has no offset yet.
Report ReportNow(bool withOffset = true, bool southern = false) {
  tidewell::surroundings.ReadTimeZone = runtime::SystemTimeZone;
  mMoon::OffsetMinutes = withOffset ? mMoon::LocalTimeOffset() : 0;
  support::ReportStage stage({runtime::SystemNow()});
  support::ReportStage::locale = runtime::ReadUserLocale();
  stage.form.southernView = southern;
  mMoon::UpdateMoonReport();
  const auto& tip = mMoon::TrayIconData.szTip;
  const std::wstring padded(tip.begin(), tip.end());
  return {.text = Joined(stage.form.lines, stage.form.label1),
          .tip = padded.substr(0, padded.find_last_not_of(L' ') + 1),
          .drawing = stage.form.drawing};
}

/// The lines and the dark fraction of the window.
std::wstring ShownText(HWND main) {
  std::vector<std::wstring> lines;
  for (const forms::ControlDescription& line : layout::kLblMoonDescriptions) {
    lines.push_back(support::TextOf(GetDlgItem(main, line.id)));
  }
  return Joined(lines, support::TextOf(GetDlgItem(main, layout::kLabel1)));
}

/// Whether the window shows this minute's report; otherwise `problem` says what it shows.
bool ShowsReport(const Program& program, bool withOffset, std::wstring& problem) {
  const std::wstring shown = ShownText(program.Main());
  const std::wstring wanted = ReportNow(withOffset).text;
  problem = L"'" + wanted + L"', got '" + shown + L"'";
  return shown == wanted;
}

/// Reads within the second before the first tick. Tries again: a busy machine may be too slow.
TEST(Report, BeforeTheFirstTick) {
  std::wstring problem;
  Until(problem, [&] { return ShowsReport(Program(), false, problem); });
}

TEST(Report, AfterTheFirstTick) {
  const Program program;
  std::wstring problem;
  Until(problem, [&] { return ShowsReport(program, true, problem); });
  Note(ShownText(program.Main()));
}

/// The texts that may be the tip under the pointer: tooltips, and the name that a screen reader gets.
std::vector<std::wstring> TextsAt(POINT place) {
  std::vector<std::wstring> texts = support::ShownTips();
  if (const auto name = support::AccessibleNameAt(place)) {
    texts.push_back(*name);
  }
  return texts;
}

TEST(Report, IsInTheTipOfTheIcon) {
  const Program program;
  program.Update();
  const PhysicalPixels physical;
  const POINT middle = MiddleOf(program.PlaceOfIcon());
  SetCursorPos(middle.x, middle.y);
  std::wstring problem;
  Until(problem, [&] {
    problem = ReportNow().tip + L", got";
    for (const std::wstring& text : TextsAt(middle)) {
      problem += L" '" + text + L"'";
      if (text.starts_with(ReportNow().tip)) {
        return true;
      }
    }
    return false;
  });
}

/// How much of the square around the Moon's disc differs.
double PartThatDiffers(const Pixels& wanted, const Pixels& got, double scale) {
  constexpr int kSide = 2 * (tidewell::kDiscRadius + 1);
  const auto onScreen = [&](int length) { return static_cast<int>(std::lround(length * scale)); };
  const int left = onScreen(tidewell::kDiscCentre.x - kSide / 2);
  const int top = onScreen(tidewell::kDiscCentre.y - kSide / 2);
  int different = 0;
  for (int y = top; y < top + onScreen(kSide); ++y) {
    for (int x = left; x < left + onScreen(kSide); ++x) {
      different += wanted.At(x, y) == got.At(x, y) ? 0 : 1;
    }
  }
  return different / (1.0 * onScreen(kSide) * onScreen(kSide));
}

void ExpectPicture(const Program& program, bool southern) {
  constexpr double kDesignedWidth = layout::kClientWidth / 15.0;  // pixels at 96 dpi
  program.Update();
  const Report report = ReportNow(true, southern);
  const LONG ownWidth = ClientOnScreen(program.Main()).right - ClientOnScreen(program.Main()).left;
  const PhysicalPixels physical;
  RestPointer();
  const Pixels shown(nullptr, ClientOnScreen(program.Main()));
  const double scale = shown.Width() / kDesignedWidth;
  const Pixels wanted(shown.Width(), shown.Height());
  const RECT all = {0, 0, shown.Width(), shown.Height()};
  SetDCBrushColor(wanted.dc(), shown.At(2, 2));
  FillRect(wanted.dc(), &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  EXPECT_TRUE(forms::Replay(wanted.dc(), report.drawing.Primitives(), {scale, scale}));
  const double different = PartThatDiffers(wanted, shown, scale);
  // If the system scales the window, it smooths the edges.
  EXPECT_LE(different, shown.Width() == ownWidth ? 0.01 : 0.08);
  Note(std::to_wstring(std::lround(scale * 100)) + L" % of the designed size, " + std::to_wstring(different * 100) +
       L" % of it differs, " + report.text);
}

TEST(Report, IsInThePicture) { ExpectPicture(Program(), false); }

TEST(Report, IsInThePictureOfTheSouthernView) {
  const Program program;
  ClickOn(program.Option(2), true);
  Until(L"the option's tick", [&] { return support::Ask(program.Option(2), BM_GETCHECK) == BST_CHECKED; });
  ExpectPicture(program, true);
}

}  // namespace
