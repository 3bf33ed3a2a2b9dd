// The windows: their controls, places and fonts.

#include <algorithm>

#include "forms/controls_win.h"
#include "report/frmMoon_layout.h"
#include "support/other_windows_win.h"
#include "tray/frmAbout_layout.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"

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

Outcome MainWindow(const Program& program) {
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

Outcome AboutBox(const Program& program) {
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
Outcome TabOrder(const Program& program) {
  Facts facts;
  const auto next = [&](HWND from) {
    return static_cast<long long>(GetDlgCtrlID(GetNextDlgTabItem(program.Main(), from, FALSE)));
  };
  facts.Want(L"after the first option", mainLayout::kCheck1 + 2, next(program.Option(0)));
  facts.Want(L"after the third option", mainLayout::kCommand1Description.id, next(program.Option(2)));
  facts.Want(L"after Close", mainLayout::kCheck1 + 0, next(program.CloseButton()));
  return facts.Result();
}

/// Whether a pixel is much darker than the ground. Letters smoothed with ClearType have fainter pixels further out.
bool IsInk(COLORREF pixel, COLORREF ground) {
  const auto light = [](COLORREF colour) { return GetRValue(colour) + GetGValue(colour) + GetBValue(colour); };
  return light(ground) - light(pixel) > 3 * 64;
}

SIZE InkOf(const Picture& picture) {
  LONG left = picture.Width(), right = -1, top = picture.Height(), bottom = -1;
  const COLORREF ground = picture.At(picture.Width() - 1, 0);
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      if (IsInk(picture.At(x, y), ground)) {
        left = std::min<LONG>(left, x);
        right = std::max<LONG>(right, x);
        top = std::min<LONG>(top, y);
        bottom = std::max<LONG>(bottom, y);
      }
    }
  }
  return {.cx = std::max(0L, right - left + 1), .cy = std::max(0L, bottom - top + 1)};
}

/// The bounds of a text's pixels in a font, in this program's pixels.
SIZE InkOfText(const std::wstring& text, const forms::FontDescription& font) {
  constexpr RECT kRoom = {.left = 0, .top = 0, .right = 1600, .bottom = 200};
  const runtime::unique_font made = forms::MakeFont(font);
  const Picture picture(kRoom.right, kRoom.bottom, [&](HDC dc) {
    const HGDIOBJ before = SelectObject(dc, made.get());
    FillRect(dc, &kRoom, GetSysColorBrush(COLOR_3DFACE));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    TextOutW(dc, 20, 20, text.c_str(), static_cast<int>(text.size()));
    SelectObject(dc, before);
  });
  return InkOf(picture);
}

/// The same for a control on the screen. Ignores a border and whatever lies left of x = `from`.
SIZE InkOfControl(HWND control, int from, int border) {
  RECT physical{};
  {
    const PhysicalPixels scope;
    physical = ClientOnScreen(control);
  }
  RECT place = ClientOnScreen(control);
  const RECT parent = ClientOnScreen(GetParent(control));
  if (physical.right - physical.left != place.right - place.left) {
    throw NotHere(L"the system scales the window, so its letters differ");
  }
  IntersectRect(&place, &place, &parent);  // the lines are wider than the window
  place.left += from;
  InflateRect(&place, -border, -border);
  return InkOf(Picture(place));
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

Outcome Fonts(const Program& program) {
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
  WantFont(facts, program.CloseButton(), mainLayout::kCommand1Description, 0, kEdge);
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
