#include "report/frmMoon.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "forms/device_context_win.h"
#include "forms/drawing_list_win.h"
#include "forms/high_contrast_win.h"
#include "forms/place_win.h"
#include "report/frmMoon_layout.h"
#include "report/local_time_offset.h"
#include "report/moon_report.h"
#include "report/settings.h"
#include "resources/resource_ids.h"
#include "runtime/end_on_error.h"
#include "tray/icon_number.h"

namespace tidewell {

using mMoon::Settings;

namespace layout = frmMoonLayout;

namespace {

constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD kExStyle = WS_EX_CONTROLPARENT;

constexpr UINT_PTR kTimer1 = 1;
constexpr UINT_PTR kTimer2 = 2;

runtime::unique_icon LoadWindowIcon(int widthMetric, int heightMetric) {
  return forms::LoadIconResource(IDI_WINDOW, GetSystemMetrics(widthMetric), GetSystemMetrics(heightMetric));
}

/// Whether a notice says that the clock, the zone or the locale has changed, or that the computer has resumed from
/// sleep.
bool ChangesTheReport(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMECHANGE:
      return true;
    case WM_POWERBROADCAST:
      return wParam == PBT_APMRESUMEAUTOMATIC;
    case WM_SETTINGCHANGE:
      return lParam != 0 && std::wstring_view(reinterpret_cast<const wchar_t*>(lParam)) == L"intl";
    default:
      return false;
  }
}

}  // namespace

/// Repaints the picture at the end of a report, even one cut short by an error, but only if its pixels have changed.
class frmMoon::PictureRepaint {
 public:
  explicit PictureRepaint(frmMoon& form) : form_(form), before_(form.drawing_.Primitives()) {}
  ~PictureRepaint() {
    const auto onScreen = [this](const auto& primitive) { return forms::OnScreen(primitive, form_.pixelScale_); };
    if (!std::ranges::equal(form_.drawing_.Primitives(), before_, {}, onScreen, onScreen)) {
      const RECT picture = form_.PicturePlace();
      // The new picture's first circle covers the old one, so nothing is erased.
      form_.paintRetry_.Note(InvalidateRect(form_.hwnd(), &picture, FALSE) != FALSE);
    }
  }
  PictureRepaint(const PictureRepaint&) = delete;
  PictureRepaint& operator=(const PictureRepaint&) = delete;

 private:
  frmMoon& form_;
  std::vector<forms::Primitive> before_;
};

frmMoon::Controls::Controls(HWND form, forms::PaintRetry& retry)
    : Frame1(layout::kFrame1Description, form, retry),
      Command1(layout::kCommand1Description, form),
      Label1(layout::kLabel1Description, form) {
  for (const forms::ControlDescription& description : layout::kCheck1Descriptions) {
    Check1.emplace_back(description, Frame1.hwnd());
  }
  const int room = forms::ToPixels(layout::kWidestText, forms::ReadTwipsPerPixel().x);
  for (const forms::ControlDescription& description : layout::kLblMoonDescriptions) {
    lblMoon.emplace_back(description, form, room);
  }
}

frmMoon::frmMoon()
    : icon_(LoadWindowIcon(SM_CXICON, SM_CYICON)),
      smallIcon_(LoadWindowIcon(SM_CXSMICON, SM_CYSMICON)),
      about_(*this) {}

void frmMoon::Load() {
  pixelScale_ = forms::ReadPixelScale();
  Create({.caption = layout::kCaption,
          .style = kStyle,
          .exStyle = kExStyle,
          .place = forms::CentredPlace(layout::kClientWidth, layout::kClientHeight, kStyle, kExStyle)});
  SetIcons(hwnd());
  controls_.emplace(hwnd(), paintRetry_);
  Form_Load();
  Timer1.emplace(hwnd(), kTimer1, layout::kTimerInterval);
  SetTimer(hwnd(), kTimer2, layout::kTimerInterval, nullptr);  // unchecked: Timer2 has no handler
}

forms::DrawingList& frmMoon::Drawing() { return drawing_; }

void frmMoon::SetLabel1Caption(const std::wstring& caption) { controls_->Label1.SetCaption(caption); }

bool frmMoon::SouthernView() const { return StateFromOption(Settings.SouthernView) == 1; }

void frmMoon::SetMoonLine(std::size_t index, const std::wstring& text) {
  controls_->lblMoon.at(index).SetCaption(text);
}

bool frmMoon::Visible() const { return IsWindowVisible(hwnd()) != FALSE && IsIconic(hwnd()) == FALSE; }

void frmMoon::Show() { forms::ShowInForeground(hwnd()); }

void frmMoon::Hide() {
  minimisedForIcon_ = !about_.IconStands();
  ShowWindow(hwnd(), minimisedForIcon_ ? SW_MINIMIZE : SW_HIDE);
}

void frmMoon::SetIcons(HWND window) const {
  const auto set = [window](WPARAM size, const runtime::unique_icon& icon) {
    const auto handle = reinterpret_cast<LPARAM>(icon.get());
    if (SendMessageW(window, WM_GETICON, size, 0) != handle) {  // or the caption would flicker
      SendMessageW(window, WM_SETICON, size, handle);
    }
  };
  set(ICON_SMALL, smallIcon_);
  set(ICON_BIG, icon_);
}

RECT frmMoon::WorkArea() const { return forms::WorkAreaOf(hwnd()); }

LRESULT frmMoon::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  forms::StayOnScreen(hwnd(), message, wParam);
  switch (message) {
    case WM_TIMER:
      if (wParam == kTimer1) {
        paintRetry_.OnTick(hwnd());
        Timer1_Timer();
      }
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case DM_GETDEFID:
      // Enter presses "Close" only if it has the focus: no default button ends the program by accident.
      return GetFocus() == controls_->Command1.hwnd() ? MAKELRESULT(layout::kCommand1Description.id, DC_HASDEFID) : 0;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_WINDOWPOSCHANGING:
      StayInactiveWhileHidden(*reinterpret_cast<WINDOWPOS*>(lParam));
      return DefaultHandling(message, wParam, lParam);
    case WM_ACTIVATE:
      focus_.OnActivate(hwnd(), wParam);
      return 0;
    case WM_SETFOCUS:
      focus_.OnSetFocus(hwnd(), wParam);
      return 0;
    case WM_CLOSE:
      Unload();
      return 0;
    case WM_ENDSESSION:
      if (wParam != FALSE) {
        EndProgram();  // the session ends: hiding is not enough
      }
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
    case WM_TIMECHANGE:
    case WM_POWERBROADCAST:
      OnNotice(message, wParam, lParam);
      return DefaultHandling(message, wParam, lParam);
    default:
      return DefaultHandling(message, wParam, lParam);
  }
}

void frmMoon::StayInactiveWhileHidden(WINDOWPOS& change) const {
  // Form_Load places the hidden window, which must not take the keyboard.
  if (IsWindowVisible(hwnd()) == FALSE && (change.flags & SWP_SHOWWINDOW) == 0) {
    change.flags |= SWP_NOACTIVATE;
  }
}

void frmMoon::OnNotice(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SYSCOLORCHANGE || message == WM_SETTINGCHANGE) {
    paintRetry_.Note(InvalidateRect(hwnd(), nullptr, TRUE) != FALSE);  // high contrast may have come or gone
  }
  if (ChangesTheReport(message, wParam, lParam)) {
    refreshAtTick_ = true;
  }
}

void frmMoon::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) {
    return;
  }
  if (id == layout::kCommand1Description.id) {
    Command1_Click();
  } else if (id >= layout::kCheck1 && id < layout::kCheck1 + static_cast<int>(layout::kCheck1Descriptions.size())) {
    Check1_Click(id - layout::kCheck1);
  }
}

void frmMoon::Paint() {
  const forms::PaintScope paint(hwnd(), paintRetry_);
  if (forms::DarkHighContrast()) {  // the picture's dark half and rim are as black as the window
    const std::array<forms::Primitive, 1> ring = {forms::Ellipse{.centre = kDiscCentre,
                                                                 .halfWidth = kDiscRadius + 1,
                                                                 .halfHeight = kDiscRadius + 1,
                                                                 .outline = GetSysColor(COLOR_WINDOWTEXT),
                                                                 .fill = std::nullopt}};
    paintRetry_.Note(forms::Replay(paint.dc(), ring, pixelScale_));
  }
  const bool whole = forms::Replay(paint.dc(), drawing_.Primitives(), pixelScale_);
  paintRetry_.Note(whole);
  if (!whole) {  // half a picture would show another phase: none is better
    const RECT picture = PicturePlace();
    SelectClipRgn(paint.dc(), nullptr);
    FillRect(paint.dc(), &picture, reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1}));
  }
}

RECT frmMoon::PicturePlace() const {
  const forms::Box box = forms::OnScreen(SquareOfRadius(kDiscRadius), pixelScale_);
  return {.left = box.left, .top = box.top, .right = box.right, .bottom = box.bottom};
}

void frmMoon::Refresh() {
  mMoon::OffsetMinutes = mMoon::LocalTimeOffset();
  ReportAndUpdateIcon(TrayCommand::Modify);
}

void frmMoon::ReportAndUpdateIcon(TrayCommand command) {
  const PictureRepaint repaint(*this);
  mMoon::UpdateMoonReport();
  std::int16_t IcoNum = IcoNumFromIconNumber();
  about_.UpdateMoonIcon(static_cast<std::int32_t>(command), IcoNum);
}

void frmMoon::EndProgram() {
  runtime::End();  // first: the shell may send more of the icon's messages while it takes the icon away
  std::int16_t IcoNum = 0;
  about_.UpdateMoonIcon(static_cast<std::int32_t>(TrayCommand::Delete), IcoNum);
  settingsFile_.reset();
}

void frmMoon::Form_Load() {
  forms::MakeTopmost(hwnd());
  settingsFile_.emplace();
  settingsFile_->Read();
  // On purpose only the southern view is restored; the other two start unticked.
  if (StateFromOption(Settings.SouthernView) == 1) {
    controls_->Check1.at(2).SetState(1);
    Check1_Click(2);  // SetState does not notify the form, but a changed box counts as a click
  }
  ReportAndUpdateIcon(TrayCommand::Add);  // on purpose before the offset is known, unless the click above has set it
}

void frmMoon::Timer1_Timer() {
  const runtime::DateValue now = surroundings.Now();
  if (!refreshAtTick_ && runtime::SameMinute(now, LastUpdate)) {
    return;
  }
  refreshAtTick_ = false;
  LastUpdate = now;
  Refresh();
  if (!runtime::Ending()) {
    KeepInReach();
  }
}

void frmMoon::KeepInReach() {
  if (IsWindowVisible(hwnd()) == FALSE && !about_.IconStands()) {
    minimisedForIcon_ = true;
    ShowWindow(hwnd(), SW_SHOWMINNOACTIVE);
  } else if (minimisedForIcon_ && about_.IconStands()) {
    minimisedForIcon_ = false;
    if (IsIconic(hwnd()) != FALSE) {
      ShowWindow(hwnd(), SW_HIDE);
    }
  }
}

void frmMoon::Check1_Click(int Index) {
  settingsFile_->Read();  // keeps what another writer has changed
  const runtime::Boolean option = OptionFromState(controls_->Check1.at(static_cast<std::size_t>(Index)).State());
  switch (Index) {
    case 0:
      Settings.RestoreInTray = option;
      break;
    case 1:
      Settings.AutoStart = option;
      break;
    case 2:
      Settings.SouthernView = option;
      break;
  }
  settingsFile_->Write();
  Refresh();
}

void frmMoon::Command1_Click() { Unload(); }

void frmMoon::Form_Unload(bool& Cancel) {
  // The box on the window decides, not the stored option.
  if (controls_->Check1.at(0).State() == 1) {
    Cancel = true;
    Hide();
    return;
  }
  EndProgram();
}

}  // namespace tidewell
