// The report: the window and the tip show what the same code computes here for the same minute.

#include "report/frmMoon_layout.h"
#include "runtime/clock.h"
#include "support/other_windows_win.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"
#include "windows_check/waiting.h"
#include "windows_check/wanted.h"

namespace check {

namespace {

namespace layout = tidewell::frmMoonLayout;

/// The lines and the label, in the form of TextOf.
std::wstring ShownText(HWND main) {
  Report shown;
  for (std::size_t index = 0; index < shown.lines.size(); ++index) {
    shown.lines.at(index) = support::TextOf(GetDlgItem(main, layout::kLblMoon + static_cast<int>(index)));
  }
  shown.label = support::TextOf(GetDlgItem(main, layout::kLabel1));
  return TextOf(shown);
}

bool IsAmong(const std::wstring& text, const std::vector<Report>& reports) {
  for (const Report& report : reports) {
    if (TextOf(report) == text) {
      return true;
    }
  }
  return false;
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
    outcome = Failed(L"'" + TextOf(reports.back()) + L"'", L"'" + shown + L"'");
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
  return IsAmong(shown, reports) ? Ok(shown) : Failed(L"'" + TextOf(reports.back()) + L"'", L"'" + shown + L"'");
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
  const POINT middle = {.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2};
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

}  // namespace

std::vector<Check> ReportChecks() {
  return {
      {L"report before the first tick", BeforeTheFirstTick},
      {L"report after the first tick", AfterTheFirstTick},
      {L"tip of the icon", Tip},
  };
}

}  // namespace check
