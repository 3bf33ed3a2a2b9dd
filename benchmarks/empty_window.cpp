// What a window costs by itself: as large as the program's, with two timers of the same interval, the same DLLs and the
// same manifest, and nothing in it.

#include <windows.h>
// After windows.h, which they build on.
#include <commctrl.h>
#include <shellapi.h>

namespace {

constexpr SIZE kClient = {257,
                          342};   // pixels, like the program's main window: benchmarks/program_cost.py compares them
constexpr UINT kInterval = 1000;  // ms
constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

// Never called: so that these DLLs are loaded as they are by the program.
[[maybe_unused]] auto* volatile shell32 = &Shell_NotifyIconA;
[[maybe_unused]] auto* volatile gdi32 = &CreateSolidBrush;

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, PWSTR /*commandLine*/, int showCommand) {
  const INITCOMMONCONTROLSEX controls = {.dwSize = sizeof controls, .dwICC = ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);

  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = OnMessage;
  windowClass.hInstance = instance;
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
  windowClass.lpszClassName = L"EmptyWindow";
  RegisterClassW(&windowClass);

  RECT outer = {0, 0, kClient.cx, kClient.cy};
  AdjustWindowRectEx(&outer, kStyle, FALSE, 0);
  HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Empty", kStyle, 100, 100, outer.right - outer.left,
                                outer.bottom - outer.top, nullptr, nullptr, instance, nullptr);
  SetTimer(window, 1, kInterval, nullptr);
  SetTimer(window, 2, kInterval, nullptr);
  ShowWindow(window, showCommand);

  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
