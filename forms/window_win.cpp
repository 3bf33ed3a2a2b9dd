#include "forms/window_win.h"

namespace forms {

void RunMessageLoop() {
  MSG message;
  // -1, an error, must end the loop too, or it spins.
  while (!runtime::Ending() && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(GetAncestor(message.hwnd, GA_ROOT), &message) == FALSE) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

}  // namespace forms
