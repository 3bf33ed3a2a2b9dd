#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <algorithm>
#include <array>

#include "forms/window_win.h"
#include "report/frmMoon.h"
#include "report/surroundings.h"
#include "runtime/clock.h"
#include "runtime/end_on_error.h"
#include "runtime/locale_names.h"
#include "start/previous_instance_win.h"
#include "start/without_memory.h"

namespace tidewell {

namespace {

/// Lets libraries load from the system's folder only: anybody may have put one beside the program. Windows 7 without
/// its updates lacks the function.
void RestrictLibrarySearch() {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
  if (found != nullptr) {
    reinterpret_cast<BOOL(WINAPI*)(DWORD)>(reinterpret_cast<void*>(found))(LOAD_LIBRARY_SEARCH_SYSTEM32);
  }
}

/// Whether the start asks for no window, as the start-up entry and `start /min` do.
bool AsksForNoWindow(int showCommand) {
  constexpr std::array kCommands = {SW_HIDE, SW_SHOWMINIMIZED, SW_MINIMIZE, SW_SHOWMINNOACTIVE, SW_FORCEMINIMIZE};
  return std::ranges::find(kCommands, showCommand) != kCommands.end();
}

/// A shortcut may ask for a maximised window, but this one has a fixed size. The system may obey the shortcut the first
/// time a window is shown, whatever is asked for here.
void ShowMainWindow(HWND window, int showCommand) {
  if (AsksForNoWindow(showCommand)) {
    return;  // it lives in the tray; if there is no icon, a tick shows it minimised
  }
  ShowWindow(window, showCommand == SW_SHOWMAXIMIZED ? SW_SHOWNORMAL : showCommand);
  if (IsZoomed(window) != FALSE) {
    ShowWindow(window, SW_SHOWNORMAL);
  }
}

/// The main window while the program runs.
frmMoon* theForm = nullptr;

/// Ends the process. The system removes all windows at once, faster than we could destroy them one by one.
[[noreturn]] void Finish() noexcept {
  // Also after an error, or if the loop has ended by itself: no dead icon may stay.
  if (theForm != nullptr) {
    theForm->EndProgram();
  }
  ExitProcess(static_cast<UINT>(runtime::ReportRuntimeError()));
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

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*commandLine*/, int nShowCmd) {
  tidewell::RestrictLibrarySearch();
  tidewell::PrepareForExceptions();
  const tidewell::PreviousInstanceTest test;
  if (!test.AnotherIsRunning()) {
    tidewell::Run(nShowCmd);
  }
  return 0;
}
