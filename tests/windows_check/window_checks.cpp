// The windows: their controls, places and fonts, and what the options do.

#include <algorithm>
#include <fstream>
#include <iterator>

#include "forms/controls_win.h"
#include "report/frmMoon_layout.h"
#include "report/settings.h"
#include "runtime/code_page.h"
#include "tray/frmAbout_layout.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

namespace {

namespace mainLayout = tidewell::frmMoonLayout;
namespace aboutLayout = tidewell::frmAboutLayout;

using forms::ControlDescription;
using forms::ControlKind;

void ExpectPlace(const RECT& wanted, const RECT& got) {
  EXPECT_TRUE(EqualRect(&wanted, &got)) << "wanted " << wanted.left << ", " << wanted.top << ", " << wanted.right
                                        << ", " << wanted.bottom << ", got " << got.left << ", " << got.top << ", "
                                        << got.right << ", " << got.bottom;
}

void ExpectStyle(const ControlDescription& description, HWND control) {
  LONG compared = WS_CHILD | WS_VISIBLE | WS_DISABLED | WS_TABSTOP;
  LONG wanted = WS_CHILD | (description.visible ? WS_VISIBLE : 0) | (description.enabled ? 0 : WS_DISABLED);
  switch (description.kind) {
    case ControlKind::Button:
      compared |= BS_TYPEMASK & ~BS_DEFPUSHBUTTON;  // the system sets this on the button that Enter would press
      wanted |= WS_TABSTOP | BS_PUSHBUTTON;
      break;
    case ControlKind::CheckBox:
      compared |= BS_TYPEMASK;
      wanted |= WS_TABSTOP | BS_AUTOCHECKBOX;
      break;
    case ControlKind::Label:
      compared |= SS_TYPEMASK | SS_NOPREFIX;
      wanted |= SS_NOPREFIX | (description.centred ? SS_CENTER : SS_LEFT);
      break;
    default:
      break;
  }
  EXPECT_EQ(GetWindowLongW(control, GWL_STYLE) & compared, wanted);
}

/// Compares a control with its description. Other checks compare the texts of the report.
void ExpectControl(HWND parent, const ControlDescription& description, bool itsText) {
  SCOPED_TRACE(description.id);
  const HWND control = GetDlgItem(parent, description.id);
  ExpectPlace(forms::ToPixels(description.place, forms::ReadTwipsPerPixel()), support::PlaceOf(control));
  ExpectStyle(description, control);
  if (itsText) {
    EXPECT_EQ(support::TextOf(control), description.caption);
  }
  if (itsText || description.kind == ControlKind::Label) {
    EXPECT_EQ(support::AccessibleName(control).value_or(L""), support::TextOf(control));
  }
}

void ExpectWindow(HWND window, const std::wstring& caption, const forms::TwipsPlace& client, LONG frame) {
  RECT got{};
  GetClientRect(window, &got);
  ExpectPlace(forms::ToPixels(client, forms::ReadTwipsPerPixel()), got);
  EXPECT_EQ(support::TextOf(window), caption);
  EXPECT_EQ(support::AccessibleName(window).value_or(L""), caption);
  EXPECT_TRUE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
  // Under Wine this message does not cross processes.
  EXPECT_NE(support::Ask(window, WM_GETICON, ICON_SMALL).value_or(1), 0) << "its icon";
  constexpr LONG kFrame = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME;
  EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & kFrame, frame);
}

void SaveWindow(HWND window, const std::wstring& name) {
  const PhysicalPixels physical;
  RECT place{};
  GetWindowRect(window, &place);
  RestPointer();
  SavePicture(place, 0, name);
}

TEST(Window, OfTheMoonIsAsDesigned) {
  const Program program;
  ExpectWindow(program.Main(), mainLayout::kCaption, {0, 0, mainLayout::kClientWidth, mainLayout::kClientHeight},
               WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
  ExpectControl(program.Main(), mainLayout::kFrame1Description, false);
  for (const ControlDescription& option : mainLayout::kCheck1Descriptions) {
    ExpectControl(GetDlgItem(program.Main(), mainLayout::kFrame1), option, true);
  }
  for (const ControlDescription& line : mainLayout::kLblMoonDescriptions) {
    ExpectControl(program.Main(), line, false);
  }
  ExpectControl(program.Main(), mainLayout::kCommand1Description, true);
  ExpectControl(program.Main(), mainLayout::kLabel1Description, false);
  SaveWindow(program.Main(), L"window");
}

TEST(Window, AboutIsAsDesigned) {
  const Program program;
  program.ShowAbout();
  ExpectWindow(program.About(), aboutLayout::kCaption, {0, 0, aboutLayout::kClientWidth, aboutLayout::kClientHeight},
               WS_CAPTION | WS_SYSMENU);
  for (const ControlDescription& description :
       {aboutLayout::kLblTitleDescription, aboutLayout::kLblDescriptionDescription, aboutLayout::kCmdOKDescription}) {
    ExpectControl(program.About(), description, true);
  }
  SaveWindow(program.About(), L"about");
}

TEST(Window, HasItsTabOrder) {
  const Program program;
  const auto next = [&](HWND from) { return GetNextDlgTabItem(program.Main(), from, FALSE); };
  EXPECT_EQ(next(program.Option(0)), program.Option(2)) << "the second option is disabled";
  EXPECT_EQ(next(program.Option(2)), program.CloseButton());
  EXPECT_EQ(next(program.CloseButton()), program.Option(0));
}

/// Whether a pixel is much darker than the ground. ClearType adds fainter pixels around a letter.
bool IsInk(COLORREF pixel, COLORREF ground) {
  const auto light = [](COLORREF colour) { return GetRValue(colour) + GetGValue(colour) + GetBValue(colour); };
  return light(ground) - light(pixel) > 3 * 64;
}

SIZE InkOf(const Pixels& picture) {
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

/// The size of a text's ink in a font.
SIZE InkOfText(const std::wstring& text, const forms::FontDescription& font) {
  constexpr RECT kRoom = {.left = 0, .top = 0, .right = 1600, .bottom = 200};
  const runtime::unique_font made = forms::MakeFont(font);
  const Pixels picture(kRoom.right, kRoom.bottom);
  SelectObject(picture.dc(), made.get());
  FillRect(picture.dc(), &kRoom, GetSysColorBrush(COLOR_3DFACE));
  SetBkMode(picture.dc(), TRANSPARENT);
  SetTextColor(picture.dc(), GetSysColor(COLOR_BTNTEXT));
  TextOutW(picture.dc(), 20, 20, text.c_str(), static_cast<int>(text.size()));
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
    NotHere(L"the system scales the window, so its letters differ");
  }
  IntersectRect(&place, &place, &parent);  // the lines are wider than the window
  place.left += from;
  InflateRect(&place, -border, -border);
  return InkOf(Pixels(nullptr, place));
}

/// Compares the ink of a shown text with that in the designed font.
void ExpectFont(HWND control, const ControlDescription& description, int from = 0, int border = 0) {
  const std::wstring text = support::TextOf(control);
  const SIZE wanted = InkOfText(text, description.font);
  const SIZE got = InkOfControl(control, from, border);
  EXPECT_NEAR(got.cx, wanted.cx, 1) << text;
  EXPECT_NEAR(got.cy, wanted.cy, 1) << text;
}

TEST(Window, HasTheDesignsFonts) {
  const Program program;
  program.Update();
  RECT client{};
  GetClientRect(program.Main(), &client);
  RestPointer();
  for (const ControlDescription& line : mainLayout::kLblMoonDescriptions) {
    const HWND control = GetDlgItem(program.Main(), line.id);
    if (InkOfText(support::TextOf(control), line.font).cx < client.right) {  // otherwise it is shown smaller
      ExpectFont(control, line);
    }
  }
  const int boxWidth = GetSystemMetrics(SM_CXMENUCHECK) + 2;
  ExpectFont(program.Option(2), mainLayout::kCheck1Descriptions.at(2), boxWidth);
  constexpr int kEdge = 5;
  ExpectFont(program.CloseButton(), mainLayout::kCommand1Description, 0, kEdge);
  program.ShowAbout();
  RestPointer();
  for (const ControlDescription& label : {aboutLayout::kLblTitleDescription, aboutLayout::kLblDescriptionDescription}) {
    ExpectFont(GetDlgItem(program.About(), label.id), label);
  }
}

// ---- the options

constexpr std::size_t kRecordStart = 16 * 512;  // the 17th record

/// The file after a first run: zeros, then the record.
std::string WantedFile(const tidewell::SettingsRecord& record) {
  const tidewell::SettingsBytes bytes = Pack(record, runtime::SystemCodePage());
  return std::string(kRecordStart, '\0') + std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string File() {
  std::ifstream file(SettingsFile(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Clicks an option twice. After each click the file must hold it and nothing else.
void ClickTwice(int index, runtime::Boolean tidewell::SettingsRecord::*option) {
  const Program program;
  EXPECT_EQ(File(), "");
  tidewell::SettingsRecord record;
  for (const runtime::Boolean value : {runtime::True, runtime::False}) {
    Sleep(GetDoubleClickTime());
    ClickOn(program.Option(index), true);
    Until(L"the option's tick changed",
          [&] { return support::Ask(program.Option(index), BM_GETCHECK) == tidewell::StateFromOption(value); });
    support::Ask(program.Main(), WM_NULL);  // waits until the click is handled
    record.*option = value;
    const std::string wanted = WantedFile(record), got = File();
    EXPECT_EQ(wanted.size(), got.size());
    EXPECT_EQ(std::ranges::mismatch(wanted, got).in1 - wanted.begin(), std::ssize(wanted)) << "first wrong byte";
  }
}

TEST(Option, RestoreInSystemTrayIsStored) { ClickTwice(0, &tidewell::SettingsRecord::RestoreInTray); }

TEST(Option, SouthernViewIsStored) { ClickTwice(2, &tidewell::SettingsRecord::SouthernView); }

/// This option is disabled: a click changes nothing.
TEST(Option, AutomaticStartIsDisabled) {
  const Program program;
  ClickOn(program.Option(1), true);
  Sleep(500);
  EXPECT_EQ(support::Ask(program.Option(1), BM_GETCHECK), BST_UNCHECKED);
  EXPECT_EQ(File(), "");
}

TEST(Option, RestoreInSystemTrayHidesTheWindow) {
  const Program program;
  ClickOn(program.Option(0), true);
  Until(L"the option's tick", [&] { return support::Ask(program.Option(0), BM_GETCHECK) == BST_CHECKED; });
  ClickOn(program.CloseButton());
  program.WaitUntilShown(false);
  EXPECT_FALSE(program.Ended());
  EXPECT_TRUE(program.IconStands());
  program.SendIconMessage(WM_LBUTTONUP);
  program.WaitUntilShown(true);
}

}  // namespace
