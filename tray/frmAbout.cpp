#include "tray/frmAbout.h"

// After windows.h, which they build on.
#include <shellapi.h>
#include <windowsx.h>

#include "forms/place_win.h"
#include "resources/resource_ids.h"
#include "runtime/end_on_error.h"
#include "runtime/runtime_error.h"
#include "tray/shell_record.h"

namespace tidewell {

using mMoon::MouseMsg;
using mMoon::TrayIconData;

namespace layout = frmAboutLayout;

namespace {

constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExStyle = WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME;
constexpr forms::ScaleMode kScaleMode = forms::ScaleMode::Twips;

/// The entries of mFile. A menu's ids start at 1: 0 says that nothing was chosen.
enum MenuEntry : UINT { mnuAbout = 1, mnuShow, mnuExit };

/// Ticks while the menu is open, for EndMenuLeftBehind. If it is refused, the menu still works.
constexpr UINT_PTR kMenuTimer = 1;
constexpr UINT kMenuTimerInterval = 100;

std::uint32_t HandleBits(const void* handle) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

}  // namespace

frmAbout::Controls::Controls(HWND form)
    : lblTitle(layout::kLblTitleDescription, form),
      lblDescription(layout::kLblDescriptionDescription, form),
      cmdOK(layout::kCmdOKDescription, form) {
  for (int index = 0; index < layout::kPicMoonCount; ++index) {
    picMoon.emplace_back(layout::PicMoonDescription(index), form);
  }
}

void frmAbout::Load() {
  if (hwnd() != nullptr) {
    return;
  }
  twipsPerPixel_ = forms::ReadTwipsPerPixel();
  taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");  // broadcast by the shell whenever it makes its task bar
  Create({.caption = layout::kCaption,
          .style = kStyle,
          .exStyle = kExStyle,
          .place = forms::CentredPlace(layout::kClientWidth, layout::kClientHeight, kStyle, kExStyle)});
  // If we run elevated, the system would block the shell's broadcast.
  ChangeWindowMessageFilterEx(hwnd(), taskbarCreated_, MSGFLT_ALLOW, nullptr);
  mFile.reset(CreatePopupMenu());
  runtime::RequireMade(AppendMenuW(mFile.get(), MF_STRING, mnuAbout, layout::kMnuAboutCaption) != FALSE &&
                       AppendMenuW(mFile.get(), MF_STRING, mnuShow, layout::kMnuShowCaption) != FALSE &&
                       AppendMenuW(mFile.get(), MF_STRING, mnuExit, layout::kMnuExitCaption) != FALSE);
}

void frmAbout::MakeControls() {
  if (controls_) {
    return;
  }
  forms::Centre(hwnd(), mainForm_.WorkArea());
  controls_.emplace(hwnd());
  for (int index = 0; index < layout::kPicMoonCount; ++index) {
    controls_->picMoon.at(static_cast<std::size_t>(index)).SetPicture(Picture(index));
  }
  if (GetFocus() == hwnd()) {  // it was active for the menu, without a control to take the keyboard
    focus_.PassOn(hwnd());
  }
}

HICON frmAbout::Picture(int index) {
  runtime::unique_icon& picture = pictures_.at(static_cast<std::size_t>(index));
  if (!picture) {
    picture = forms::LoadIconResource(IDI_PHASE0 + index, 16, 16);
  }
  return picture.get();
}

void frmAbout::UpdateMoonIcon(const std::int32_t& Value, std::int16_t& IcoNum) {
  const auto command = static_cast<TrayCommand>(Value);
  // While ending, do not add the icon again; if it was never added, create no window for it.
  if (command == TrayCommand::Delete ? !notifier_.IconWanted() : runtime::Ending()) {
    return;
  }
  Load();
  TrayIconData.cbSize = kShellRecordSize;
  TrayIconData.hWnd = HandleBits(hwnd());
  TrayIconData.uID = 1;
  TrayIconData.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  TrayIconData.uCallbackMessage = WM_MOUSEMOVE;
  if (IcoNum >= layout::kPicMoonCount) {
    IcoNum = 0;
  }
  if (IcoNum < 0) {
    throw runtime::RuntimeError(runtime::ErrorNumber::ControlArrayElementDoesNotExist);
  }
  if (const HICON picture = Picture(IcoNum); picture != nullptr) {
    TrayIconData.hIcon = HandleBits(picture);
  } else if (command == TrayCommand::Add) {  // a change leaves the old picture
    throw runtime::RuntimeError(runtime::ErrorNumber::OutOfMemory);
  }
  notifier_.Apply(command);
}

LRESULT frmAbout::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  forms::StayOnScreen(hwnd(), message, wParam);
  if (message == taskbarCreated_ && taskbarCreated_ != 0) {
    notifier_.RestoreIcon();
    return 0;
  }
  switch (message) {
    case WM_TIMER:
      EndMenuLeftBehind();
      return 0;
    case WM_MOUSEMOVE:
      // From the pointer over the window, or from the tray icon, whose X is the number of its message.
      Form_MouseMove(0, 0, GET_X_LPARAM(lParam) * twipsPerPixel_.x, GET_Y_LPARAM(lParam) * twipsPerPixel_.y);
      return 0;
    case WM_WINDOWPOSCHANGING:
      if (makingTopmost_) {
        // The call would activate even a hidden window: pointing at the icon must not take the keyboard.
        reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
      }
      return DefaultHandling(message, wParam, lParam);
    case WM_SHOWWINDOW:
      if (wParam != FALSE) {
        MakeControls();
      }
      return DefaultHandling(message, wParam, lParam);
    case WM_COMMAND:
      OnCommand(LOWORD(wParam));
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(layout::kCmdOK, DC_HASDEFID);
    case WM_ACTIVATE:
      focus_.OnActivate(hwnd(), wParam);
      return 0;
    case WM_SETFOCUS:
      focus_.OnSetFocus(hwnd(), wParam);
      return 0;
    case WM_CLOSE:
      Unload();
      return 0;
    default:
      return DefaultHandling(message, wParam, lParam);
  }
}

void frmAbout::OnCommand(int id) {
  if (id == layout::kCmdOK || id == IDCANCEL) {  // IDCANCEL: Escape
    cmdOK_Click();
  }
}

void frmAbout::cmdOK_Click() { Unload(); }

void frmAbout::Form_Unload(bool& Cancel) {
  Cancel = true;
  ShowWindow(hwnd(), SW_HIDE);
}

void frmAbout::Form_MouseMove(int /*Button*/, int /*Shift*/, double X, double Y) {
  mainForm_.SetIcons(hwnd());
  makingTopmost_ = true;
  forms::MakeTopmost(hwnd());
  makingTopmost_ = false;
  // The shell passes its message's number as lParam: in pixels, X is that number and Y is 0. A real mouse move can look
  // the same only in row 0 of a window wider than 514 pixels.
  MouseMsg = forms::ToPixels(X, twipsPerPixel_.x, kScaleMode);
  if (Y != 0) {
    return;
  }
  // The icon's messages also arrive while the menu is open: no toggling then, and no second menu.
  if (menuOpen_) {
    if (MouseMsg == WM_LBUTTONUP || MouseMsg == WM_RBUTTONUP) {
      taskBar_ = nullptr;  // the next tick ends a menu that has not got the foreground
    }
    return;
  }
  switch (MouseMsg) {
    case WM_LBUTTONUP:
      mainForm_.Visible() ? mainForm_.Hide() : mainForm_.Show();
      break;
    case WM_RBUTTONUP:
      PopupMenu();
      break;
    default:
      break;
  }
}

void frmAbout::PopupMenu() {
  menuOpen_ = true;
  const HWND before = GetForegroundWindow();
  POINT pointer{};
  if (GetCursorPos(&pointer) == FALSE) {
    const DWORD last = GetMessagePos();  // at most a tick old
    pointer = {.x = GET_X_LPARAM(last), .y = GET_Y_LPARAM(last)};
  }
  // Without the foreground the menu would stay open when the user clicks elsewhere. The system may refuse it, or the
  // user may be elsewhere already: hence the timer.
  SetForegroundWindow(hwnd());
  // Compare threads, not processes: the desktop and the folders belong to the same process.
  const DWORD taskBarsThread = GetWindowThreadProcessId(FindWindowW(L"Shell_TrayWnd", nullptr), nullptr);
  taskBar_ = taskBarsThread != 0 && GetWindowThreadProcessId(before, nullptr) == taskBarsThread ? before : nullptr;
  SetTimer(hwnd(), kMenuTimer, kMenuTimerInterval, nullptr);
  // Only the left button chooses: a second right click on the menu must not hit "Exit".
  const BOOL entry =
      TrackPopupMenu(mFile.get(), TPM_RETURNCMD | TPM_NONOTIFY, pointer.x, pointer.y, 0, hwnd(), nullptr);
  KillTimer(hwnd(), kMenuTimer);
  // Windows needs a message after the menu, or the next menu could close as soon as it opens.
  PostMessageW(hwnd(), WM_NULL, 0, 0);
  menuOpen_ = false;
  if (runtime::Ending()) {
    return;
  }
  switch (entry) {
    case mnuAbout:
      mnuAbout_Click();
      break;
    case mnuShow:
      mnuShow_Click();
      break;
    case mnuExit:
      mnuExit_Click();
      break;
    default:
      if (GetForegroundWindow() == hwnd() && IsWindowVisible(hwnd()) == FALSE) {
        SetForegroundWindow(before);  // a hidden window must not keep it; on Windows the task bar gets it back
      }
      break;
  }
}

void frmAbout::EndMenuLeftBehind() {
  const HWND front = GetForegroundWindow();  // null while the foreground changes
  DWORD process = 0;
  GetWindowThreadProcessId(front, &process);
  if (front != nullptr && front != taskBar_ && process != GetCurrentProcessId()) {
    EndMenu();
  }
}

void frmAbout::mnuAbout_Click() { forms::ShowInForeground(hwnd()); }

void frmAbout::mnuShow_Click() { mainForm_.Show(); }

void frmAbout::mnuExit_Click() { mainForm_.EndProgram(); }

}  // namespace tidewell
