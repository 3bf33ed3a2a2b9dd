// An empty window with the program's size, timer intervals, DLLs and manifest: what a window itself costs.

#include <windows.h>
// These need windows.h first.
#include <commctrl.h>
#include <shellapi.h>

namespace {

// Pixels, like the program's main window: benchmarks/program_cost.py compares them.
constexpr SIZE kClient = {257, 342};
constexpr UINT kInterval = 1000;  // ms
constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

// Never called: the references make the system load these DLLs, as it does for the program.
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
