#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include "astro/mMoon.h"
#include "forms/clock.h"
#include "forms/locale_names.h"
#include "forms/run_time_end.h"
#include "forms/window.h"
#include "report/frmMoon.h"
#include "report/moon_report.h"
#include "start/previous_instance.h"
#include "tray/tray_icon.h"

namespace {

/// A shortcut may ask for a maximised window; this one has a fixed size. The system may heed the shortcut the first
/// time a window is shown, whatever is asked for here.
void ShowMainWindow(HWND window, int showCommand) {
  ShowWindow(window, showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand);
  if (IsZoomed(window) != FALSE) {
    ShowWindow(window, SW_SHOWNORMAL);
  }
}

void Run(int showCommand) {
  const INITCOMMONCONTROLSEX controls = {.dwSize = sizeof controls, .dwICC = ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);

  mMoon::ReadTimeZone = forms::SystemTimeZone;
  forms::BeforeRunTimeEnd = [] { mMoon::NotifyShell(mMoon::TrayCommand::Delete); };

  mMoon::frmMoon frmMoon;
  mMoon::Surroundings = {.frmMoon = &frmMoon, .Now = forms::Now, .ReadLocale = forms::ReadUserLocale};
  frmMoon.Load();
  if (!forms::Ending()) {
    ShowMainWindow(frmMoon.hwnd(), showCommand);
  }
  forms::RunMessageLoop();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*commandLine*/, int showCommand) {
  const start::PreviousInstanceTest test;
  if (test.AnotherIsRunning()) {
    return 0;
  }
  try {
    Run(showCommand);
  } catch (...) {
    forms::EndOnCurrentException();
  }
  return forms::ReportRunTimeError();
}
