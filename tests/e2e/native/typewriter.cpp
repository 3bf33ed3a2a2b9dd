// Another program of the user: one window to type into. Its text shows which keys reached it.

#include <windows.h>

int main() {
  const HWND window = CreateWindowExW(0, L"EDIT", L"", WS_POPUP | WS_BORDER | WS_VISIBLE, 30, 60, 200, 40, nullptr,
                                      nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
