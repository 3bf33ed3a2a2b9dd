#include "forms/window_win.h"

namespace forms {

void RunMessageLoop() {
  MSG message;
  BOOL got = TRUE;
  while (!runtime::Ending() && (got = GetMessageW(&message, nullptr, 0, 0)) > 0) {
    // IsDialogMessageW has no use for ticks, and most messages are ticks.
    if (message.message == WM_TIMER || IsDialogMessageW(GetAncestor(message.hwnd, GA_ROOT), &message) == FALSE) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  if (got < 0) {
    throw runtime::RuntimeError(runtime::ErrorNumber::InternalError);
  }
}

}  // namespace forms
