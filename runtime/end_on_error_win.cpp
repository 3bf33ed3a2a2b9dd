#include <windows.h>

#include <array>
#include <new>
#include <optional>

#include "runtime/end_on_error.h"
#include "version.h"

namespace runtime {

namespace {

bool ending = false;
std::optional<ErrorNumber> endedBy;

BOOL CALLBACK RemoveTopmost(HWND window, LPARAM /*parameter*/) noexcept {
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  return TRUE;
}

void ShowRuntimeError(ErrorNumber number) noexcept {
  std::array<char, 1025> text{};  // as much as wsprintfA may write; no allocation: the error may be a lack of memory
  wsprintfA(text.data(), "Run-time error '%d':\n\n%s", static_cast<int>(number), ErrorText(number));
  if (MessageBoxA(nullptr, text.data(), TIDEWELL_NAME,
                  MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND | MB_TOPMOST) == 0) {
    FatalAppExitA(0, text.data());  // asks the system for a box that needs nothing of this process
  }
}

}  // namespace

bool Ending() noexcept { return ending; }

void End() noexcept {
  ending = true;
  EndMenu();
  // Cancels a move of the window, which is a modal loop. Some systems ignore the message, but obey the Escape below.
  SendMessageW(GetCapture(), WM_CANCELMODE, 0, 0);
  // Escape also wakes the message loop, which then sees that the program is ending. Not PostQuitMessage: menus and
  // moves may take that message away, and the box of a run-time error would end on it at once.
  PostThreadMessageW(GetCurrentThreadId(), WM_KEYDOWN, VK_ESCAPE, 0);
}

void EndOn(ErrorNumber number) noexcept {
  if (!endedBy) {
    endedBy = number;
    End();
  }
}

void EndOnCurrentException() noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    EndOn(error.number());
  } catch (const std::bad_alloc&) {
    EndOn(ErrorNumber::OutOfMemory);
  } catch (...) {
    EndOn(ErrorNumber::InternalError);
  }
}

int ReportRuntimeError() noexcept {
  if (!endedBy) {
    return 0;
  }
  // Not every system obeys MB_TOPMOST, and the box would open behind a topmost window.
  EnumThreadWindows(GetCurrentThreadId(), RemoveTopmost, 0);
  ShowRuntimeError(*endedBy);
  return 1;
}

}  // namespace runtime
