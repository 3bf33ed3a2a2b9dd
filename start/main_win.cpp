#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include "forms/window_win.h"
#include "report/frmMoon.h"
#include "report/surroundings.h"
#include "runtime/clock.h"
#include "runtime/locale_names.h"
#include "runtime/run_time_end.h"
#include "start/previous_instance_win.h"
#include "start/without_memory.h"

namespace tidewell {

namespace {

/// A shortcut may ask for a maximised window; this one has a fixed size. The system may heed the shortcut the first
/// time a window is shown, whatever is asked for here.
void ShowMainWindow(HWND window, int showCommand) {
  ShowWindow(window, showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand);
  if (IsZoomed(window) != FALSE) {
    ShowWindow(window, SW_SHOWNORMAL);
  }
}

/// The main window while the program runs.
frmMoon* theForm = nullptr;

/// Ends the process. The system takes all windows away at once, which takes less time than destroying them one by one.
[[noreturn]] void Finish() noexcept {
  // Also after an error, or where the loop has ended by itself: the icon must not be left behind dead.
  if (theForm != nullptr) {
    theForm->EndProgram();
  }
  ExitProcess(static_cast<UINT>(runtime::ReportRunTimeError()));
}

[[noreturn]] void Run(int showCommand) {
  const INITCOMMONCONTROLSEX controls = {.dwSize = sizeof controls, .dwICC = ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);

  frmMoon frmMoon;
  theForm = &frmMoon;
  surroundings = {.frmMoon = &frmMoon,
                  .Now = runtime::SystemNow,
                  .ReadTimeZone = runtime::SystemTimeZone,
                  .ReadLocale = runtime::ReadUserLocale};
  try {
    frmMoon.Load();
    if (!runtime::Ending()) {
      ShowMainWindow(frmMoon.hwnd(), showCommand);
    }
    forms::RunMessageLoop();
  } catch (...) {
    runtime::EndOnCurrentException();
  }
  Finish();
}

}  // namespace

void EndWithoutMemory() noexcept {
  runtime::EndOn(runtime::ErrorNumber::OutOfMemory);
  Finish();
}

}  // namespace tidewell

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*commandLine*/, int showCommand) {
  tidewell::PrepareForExceptions();
  const tidewell::PreviousInstanceTest test;
  if (!test.AnotherIsRunning()) {
    tidewell::Run(showCommand);
  }
  return 0;
}
