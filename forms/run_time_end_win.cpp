#include <windows.h>

#include <new>
#include <optional>
#include <string>

#include "astro/runtime_error.h"
#include "forms/run_time_end.h"

namespace forms {

void (*BeforeRunTimeEnd)() = nullptr;

namespace {

bool ending = false;
std::optional<mMoon::ErrorNumber> endedBy;
bool reported = false;

mMoon::ErrorNumber NumberOfCurrentException() noexcept {
  try {
    throw;
  } catch (const mMoon::RuntimeError& error) {
    return error.number();
  } catch (const std::bad_alloc&) {
    return mMoon::ErrorNumber::OutOfMemory;
  } catch (...) {
    return mMoon::ErrorNumber::InternalError;
  }
}

BOOL CALLBACK LetTheBoxCover(HWND window, LPARAM /*parameter*/) noexcept {
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  return TRUE;
}

void ShowRunTimeError(mMoon::ErrorNumber number) {
  const std::string text =
      "Run-time error '" + std::to_string(static_cast<int>(number)) + "':\n\n" + mMoon::ErrorText(number);
  // Task modal: the program's own windows are disabled while the box stands.
  MessageBoxA(nullptr, text.c_str(), "Tidewell", MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND | MB_TOPMOST);
}

}  // namespace

bool Ending() noexcept { return ending; }

void End() noexcept {
  ending = true;
  PostQuitMessage(0);
}

void EndOnCurrentException() noexcept {
  const mMoon::ErrorNumber number = NumberOfCurrentException();
  if (endedBy) {
    return;
  }
  endedBy = number;
  End();
  if (BeforeRunTimeEnd != nullptr) {
    BeforeRunTimeEnd();
  }
  EndMenu();
}

int ReportRunTimeError() noexcept {
  if (!endedBy) {
    return 0;
  }
  if (!reported) {
    reported = true;
    // What End posted ends the first message loop that meets it, and that must not be the box's own.
    MSG quit;
    PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    // Not every system obeys MB_TOPMOST, and the box would open behind a topmost window.
    EnumThreadWindows(GetCurrentThreadId(), LetTheBoxCover, 0);
    ShowRunTimeError(*endedBy);
  }
  return 1;
}

}  // namespace forms
