#include <windows.h>

#include <new>
#include <string>

#include "astro/runtime_error.h"
#include "forms/run_time_end.h"

namespace forms {

void (*BeforeRunTimeEnd)() = nullptr;

namespace {

bool ending = false;

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

void ShowRunTimeError(mMoon::ErrorNumber number) {
  const std::string text =
      "Run-time error '" + std::to_string(static_cast<int>(number)) + "':\n\n" + mMoon::ErrorText(number);
  // Task modal: the program's own windows are disabled while the box stands. Topmost, or it would open behind them.
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
  // First, since the box's own message loop would go on handing timer ticks to the handlers.
  ending = true;
  if (BeforeRunTimeEnd != nullptr) {
    BeforeRunTimeEnd();
  }
  EndMenu();  // a menu that is being tracked would take the first clicks on the box
  ShowRunTimeError(number);
  ExitProcess(1);
}

}  // namespace forms
