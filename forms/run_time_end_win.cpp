#include <windows.h>

#include <array>
#include <cstdio>
#include <new>
#include <optional>

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

void ShowRunTimeError(mMoon::ErrorNumber number) noexcept {
  std::array<char, 128> text{};  // no allocation: the error may be that there is no memory
  std::snprintf(text.data(), text.size(), "Run-time error '%d':\n\n%s", static_cast<int>(number),
                mMoon::ErrorText(number));
  // Task modal: the program's own windows are disabled while the box stands.
  MessageBoxA(nullptr, text.data(), "Tidewell", MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND | MB_TOPMOST);
}

}  // namespace

bool Ending() noexcept { return ending; }

void End() noexcept {
  ending = true;
  EndMenu();
  // Wakes the message loop, which then sees that the program is ending. Not PostQuitMessage: menus and drags may take
  // that message away, and the box of a run-time error would end on it at once.
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
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
}

int ReportRunTimeError() noexcept {
  if (!endedBy) {
    return 0;
  }
  if (!reported) {
    reported = true;
    // Not every system obeys MB_TOPMOST, and the box would open behind a topmost window.
    EnumThreadWindows(GetCurrentThreadId(), LetTheBoxCover, 0);
    ShowRunTimeError(*endedBy);
  }
  return 1;
}

}  // namespace forms
