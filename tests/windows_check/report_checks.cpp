// The report: lines, tip and picture of the running program are those that the same code makes here for the same
// minute.

#include <algorithm>
#include <cmath>

#include "forms/drawing_list_win.h"
#include "report/frmMoon_layout.h"
#include "report/local_time_offset.h"
#include "report/moon_report.h"
#include "report/surroundings.h"
#include "runtime/clock.h"
#include "support/other_windows_win.h"
#include "support/recording_form.h"
#include "tray/phase_drawing.h"
#include "tray/tray_icon_record.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"

namespace check {

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

runtime::DateValue instant = 0;

Report ReportNow(bool southern) {
  support::RecordingForm form;
  form.southernView = southern;
  tidewell::surroundings = {.frmMoon = &form,
                            .Now = [] { return instant; },
                            .ReadTimeZone = runtime::SystemTimeZone,
                            .ReadLocale = runtime::ReadUserLocale};
  mMoon::UpdateMoonReport();
  const auto& tip = mMoon::TrayIconData.szTip;
  const std::wstring padded(tip.begin(), tip.end());
  return {.text = Joined(form.lines, form.label1),
          .tip = padded.substr(0, padded.find_last_not_of(L' ') + 1),
          .drawing = form.drawing};
}

/// Computes the report for each second of an interval. Before the program's first tick it has no offset yet.
std::vector<Report> ReportsFor(runtime::DateValue from, runtime::DateValue to, bool withOffset = true,
                               bool southern = false) {
  constexpr double kHalfASecond = 0.5 / 86400;
  tidewell::surroundings.ReadTimeZone = runtime::SystemTimeZone;
  mMoon::OffsetMinutes = withOffset ? mMoon::LocalTimeOffset() : 0;
  std::vector<Report> reports;
  for (instant = from; instant < to + kHalfASecond; instant = runtime::AddTime(instant, 0, 0, 1)) {
    reports.push_back(ReportNow(southern));
  }
  return reports;
}

/// The lines and the dark fraction of the window.
std::wstring ShownText(HWND main) {
  std::vector<std::wstring> lines;
  for (const forms::ControlDescription& line : layout::kLblMoonDescriptions) {
    lines.push_back(support::TextOf(GetDlgItem(main, line.id)));
  }
  return Joined(lines, support::TextOf(GetDlgItem(main, layout::kLabel1)));
}

bool IsAmong(const std::wstring& text, const std::vector<Report>& reports) {
  return std::ranges::find(reports, text, &Report::text) != reports.end();
}

/// Reads within the second before the first tick. Tries again, as a busy machine may be too slow.
Outcome BeforeTheFirstTick(const Stage& stage) {
  Outcome outcome = NotHere(L"");
  for (int attempt = 0; attempt < 5; ++attempt) {
    const runtime::DateValue start = runtime::SystemNow();
    const Program program(stage);
    const std::wstring shown = ShownText(program.Main());
    const std::vector<Report> reports = ReportsFor(start, runtime::SystemNow(), false);
    if (IsAmong(shown, reports)) {
      return Ok(shown);
    }
    outcome = Failed(L"'" + reports.back().text + L"'", L"'" + shown + L"'");
  }
  return outcome;
}

Outcome AfterTheFirstTick(const Stage& stage) {
  const runtime::DateValue start = runtime::SystemNow();
  const Program program(stage);
  std::wstring shown;
  std::vector<Report> reports;
  const DWORD end = GetTickCount() + 5000;
  do {
    Sleep(100);
    shown = ShownText(program.Main());
    reports = ReportsFor(start, runtime::SystemNow());
  } while (!IsAmong(shown, reports) && GetTickCount() < end);
  return IsAmong(shown, reports) ? Ok(shown) : Failed(L"'" + reports.back().text + L"'", L"'" + shown + L"'");
}

/// The texts that may be the tip under the pointer: tooltips, and the name that a screen reader gets.
std::vector<std::wstring> TextsAt(POINT place) {
  std::vector<std::wstring> texts = support::ShownTips();
  if (const auto name = support::AccessibleNameAt(place)) {
    texts.push_back(*name);
  }
  return texts;
}

Outcome Tip(const Stage& stage) {
  const runtime::DateValue start = runtime::SystemNow();
  const Program program(stage);
  program.Update();
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon(program.About());
  const POINT middle = MiddleOf(place);
  RestPointer();
  support::Point(middle);
  std::wstring wanted;
  std::wstring got;
  const DWORD end = GetTickCount() + 5000;
  do {
    Sleep(100);
    got.clear();
    for (const std::wstring& text : TextsAt(middle)) {
      for (const Report& report : ReportsFor(start, runtime::SystemNow())) {
        wanted = report.tip;
        if (text.starts_with(wanted)) {
          return Ok(wanted);
        }
      }
      got += L"'" + text + L"' ";
    }
  } while (GetTickCount() < end);
  return Failed(L"'" + wanted + L"'", got);
}

/// How much of the square around the Moon's disc differs.
double PartThatDiffers(const Picture& wanted, const Picture& got, double scale) {
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

Outcome PictureIsThatOf(const Program& program, bool southern) {
  constexpr double kDesignedWidth = layout::kClientWidth / 15.0;  // pixels at 96 dpi
  const runtime::DateValue start = runtime::SystemNow();
  program.Update();
  const Report report = ReportsFor(start, start, true, southern).front();
  const LONG ownWidth = ClientOnScreen(program.Main()).right - ClientOnScreen(program.Main()).left;
  const PhysicalPixels physical;
  RestPointer();
  const Picture shown(ClientOnScreen(program.Main()));
  const double scale = shown.Width() / kDesignedWidth;
  const Picture wanted(shown.Width(), shown.Height(), [&](HDC dc) {
    const RECT all = {0, 0, shown.Width(), shown.Height()};
    SetDCBrushColor(dc, shown.At(2, 2));
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    static_cast<void>(forms::Replay(dc, report.drawing.Primitives(), {scale, scale}));
  });
  // If the system scales the window, it smooths the edges.
  const double tolerated = shown.Width() == ownWidth ? 0.01 : 0.08;
  const double different = PartThatDiffers(wanted, shown, scale);
  const std::wstring seen = std::to_wstring(std::lround(scale * 100)) + L" % of the designed size, " +
                            std::to_wstring(different * 100) + L" % of it differs, " + report.text;
  return different <= tolerated ? Ok(seen) : Failed(L"the picture of the same report", seen);
}

Outcome NorthernPicture(const Program& program) { return PictureIsThatOf(program, false); }

Outcome SouthernPicture(const Program& program) {
  ClickOn(program.Option(2), true);
  return PictureIsThatOf(program, true);
}

}  // namespace

std::vector<Check> ReportChecks() {
  return {
      {L"report before the first tick", BeforeTheFirstTick},
      {L"report after the first tick", AfterTheFirstTick},
      {L"tip of the icon", Tip},
      {L"picture of the Moon", NorthernPicture},
      {L"picture of the southern view", SouthernPicture},
  };
}

}  // namespace check
