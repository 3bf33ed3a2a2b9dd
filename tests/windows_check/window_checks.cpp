// The windows: their controls, places and fonts.

#include <optional>

#include "forms/controls_win.h"
#include "report/frmMoon_layout.h"
#include "support/other_windows_win.h"
#include "tray/frmAbout_layout.h"
#include "windows_check/ink.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"
#include "windows_check/waiting.h"

namespace check {

namespace {

namespace mainLayout = tidewell::frmMoonLayout;
namespace aboutLayout = tidewell::frmAboutLayout;

using forms::ControlDescription;
using forms::ControlKind;

std::wstring Text(const RECT& place) {
  return L"(" + std::to_wstring(place.left) + L", " + std::to_wstring(place.top) + L", " +
         std::to_wstring(place.right - place.left) + L" x " + std::to_wstring(place.bottom - place.top) + L")";
}

/// The style bits that follow from a control's description.
LONG WantedStyle(const ControlDescription& description) {
  const LONG shared = WS_CHILD | (description.visible ? WS_VISIBLE : 0) | (description.enabled ? 0 : WS_DISABLED);
  switch (description.kind) {
    case ControlKind::Button:
      return shared | WS_TABSTOP | BS_PUSHBUTTON;
    case ControlKind::CheckBox:
      return shared | WS_TABSTOP | BS_AUTOCHECKBOX;
    case ControlKind::Label:
      return shared | SS_NOPREFIX | (description.centred ? SS_CENTER : SS_LEFT);
    default:
      return shared;
  }
}

LONG ComparedStyle(const ControlDescription& description, HWND control) {
  constexpr LONG kShared = WS_CHILD | WS_VISIBLE | WS_DISABLED | WS_TABSTOP;
  const LONG kind = description.kind == ControlKind::Label ? SS_TYPEMASK | SS_NOPREFIX : LONG{BS_TYPEMASK};
  const LONG style = GetWindowLongW(control, GWL_STYLE);
  // The system sets BS_DEFPUSHBUTTON on the button that Enter would press.
  const LONG seen = style & (kShared | (description.kind == ControlKind::Frame ? 0 : kind));
  return description.kind == ControlKind::Button ? seen & ~LONG{BS_DEFPUSHBUTTON} : seen;
}

/// Compares a control with its description. Another check compares the report's texts.
void WantControl(Facts& facts, HWND parent, const ControlDescription& description, bool itsText) {
  const HWND control = GetDlgItem(parent, description.id);
  const std::wstring name = L"control " + std::to_wstring(description.id) + L": ";
  const RECT wanted = forms::ToPixels(description.place, forms::ReadTwipsPerPixel());
  facts.Want(name + L"place", Text(wanted), Text(support::PlaceOf(control)));
  facts.Want(name + L"style", WantedStyle(description), ComparedStyle(description, control));
  if (itsText) {
    facts.Want(name + L"text", description.caption, support::TextOf(control));
    facts.Want(name + L"accessible name", description.caption, support::AccessibleName(control).value_or(L""));
  }
}

void WantWindow(Facts& facts, HWND window, const std::wstring& caption, int width, int height) {
  const forms::TwipsPerPixel scale = forms::ReadTwipsPerPixel();
  RECT client{};
  GetClientRect(window, &client);
  facts.Want(L"size", Text(forms::ToPixels({0, 0, width, height}, scale)), Text(client));
  facts.Want(L"caption", caption, support::TextOf(window));
  facts.Want(L"accessible name", caption, support::AccessibleName(window).value_or(L""));
  facts.Want(L"topmost", 1, (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
  // Under Wine this message does not cross processes.
  facts.Want(L"its icon", 1, support::Ask(window, WM_GETICON, ICON_SMALL).value_or(1) != 0);
  const LONG frame = WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX;
  facts.Want(L"frame", WS_CAPTION | WS_SYSMENU, GetWindowLongW(window, GWL_STYLE) & frame);
}

void SaveWindow(HWND window, const std::wstring& name) {
  const PhysicalPixels physical;
  RECT place{};
  GetWindowRect(window, &place);
  RestPointer();
  SavePicture(place, 0, name);
}

Outcome MainWindow(const Stage& stage) {
  const Program program(stage);
  Facts facts;
  WantWindow(facts, program.Main(), mainLayout::kCaption, mainLayout::kClientWidth, mainLayout::kClientHeight);
  WantControl(facts, program.Main(), mainLayout::kFrame1Description, false);
  for (const ControlDescription& option : mainLayout::kCheck1Descriptions) {
    WantControl(facts, GetDlgItem(program.Main(), mainLayout::kFrame1), option, true);
  }
  for (const ControlDescription& line : mainLayout::kLblMoonDescriptions) {
    WantControl(facts, program.Main(), line, false);
    const HWND control = GetDlgItem(program.Main(), line.id);
    facts.Want(L"accessible name", support::TextOf(control), support::AccessibleName(control).value_or(L""));
  }
  WantControl(facts, program.Main(), mainLayout::kCommand1Description, true);
  WantControl(facts, program.Main(), mainLayout::kLabel1Description, false);
  SaveWindow(program.Main(), L"window");
  return facts.Result();
}

Outcome AboutBox(const Stage& stage) {
  const Program program(stage);
  ShowAbout(program);
  Facts facts;
  WantWindow(facts, program.About(), aboutLayout::kCaption, aboutLayout::kClientWidth, aboutLayout::kClientHeight);
  for (const ControlDescription& description :
       {aboutLayout::kLblTitleDescription, aboutLayout::kLblDescriptionDescription, aboutLayout::kCmdOKDescription}) {
    WantControl(facts, program.About(), description, true);
  }
  SaveWindow(program.About(), L"about");
  return facts.Result();
}

/// First option, third option (the second is disabled), "Close", first option.
Outcome TabOrder(const Stage& stage) {
  const Program program(stage);
  const HWND close = GetDlgItem(program.Main(), mainLayout::kCommand1Description.id);
  Facts facts;
  const auto next = [&](HWND from) {
    return static_cast<long long>(GetDlgCtrlID(GetNextDlgTabItem(program.Main(), from, FALSE)));
  };
  facts.Want(L"after the first option", mainLayout::kCheck1 + 2, next(program.Option(0)));
  facts.Want(L"after the third option", mainLayout::kCommand1Description.id, next(program.Option(2)));
  facts.Want(L"after Close", mainLayout::kCheck1 + 0, next(close));
  return facts.Result();
}

/// Compares the ink of a shown text with that in the designed font.
void WantFont(Facts& facts, HWND control, const ControlDescription& description, int from = 0, int border = 0) {
  const std::wstring text = support::TextOf(control);
  const SIZE wanted = InkOfText(text, description.font);
  const SIZE got = InkOfControl(control, from, border);
  const auto differ = [](LONG a, LONG b) { return a - b > 1 || b - a > 1; };
  if (differ(wanted.cx, got.cx) || differ(wanted.cy, got.cy)) {
    const auto size = [](SIZE of) { return std::to_wstring(of.cx) + L" x " + std::to_wstring(of.cy); };
    facts.Want(L"pixels of '" + text + L"'", size(wanted), size(got));
  }
}

Outcome Fonts(const Stage& stage) {
  const Program program(stage);
  program.Update();
  RECT client{};
  GetClientRect(program.Main(), &client);
  RestPointer();
  Facts facts;
  for (const ControlDescription& line : mainLayout::kLblMoonDescriptions) {
    const HWND control = GetDlgItem(program.Main(), line.id);
    if (InkOfText(support::TextOf(control), line.font).cx < client.right) {  // otherwise it is shown smaller
      WantFont(facts, control, line);
    }
  }
  const int boxWidth = GetSystemMetrics(SM_CXMENUCHECK) + 2;
  WantFont(facts, program.Option(2), mainLayout::kCheck1Descriptions.at(2), boxWidth);
  constexpr int kEdge = 5;
  WantFont(facts, GetDlgItem(program.Main(), mainLayout::kCommand1Description.id), mainLayout::kCommand1Description, 0,
           kEdge);
  ShowAbout(program);
  RestPointer();
  for (const ControlDescription& label : {aboutLayout::kLblTitleDescription, aboutLayout::kLblDescriptionDescription}) {
    WantFont(facts, GetDlgItem(program.About(), label.id), label);
  }
  return facts.Result();
}

}  // namespace

std::vector<Check> WindowChecks() {
  return {
      {L"main window and its controls", MainWindow},
      {L"About box and its controls", AboutBox},
      {L"tab order", TabOrder},
      {L"fonts", Fonts},
  };
}

}  // namespace check
