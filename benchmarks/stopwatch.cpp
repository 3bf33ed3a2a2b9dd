// Times a program from inside Windows: stopwatch PROGRAM
//
// Starts it and closes it. Prints ms from start to visible window, ms from WM_CLOSE to the end, and the window's width
// and height.

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr DWORD kLook = 1;           // ms
constexpr DWORD kPatience = 30'000;  // ms
/// After the timers' first tick, when the start is over.
constexpr DWORD kSettled = 1500;  // ms

/// The visible top-level window of a process, or null.
HWND VisibleWindow(DWORD process) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == process && IsWindowVisible(window) != FALSE) {
      return window;
    }
  }
  return nullptr;
}

}  // namespace

int wmain(int count, wchar_t** arguments) try {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process;
  const Clock::time_point started = Clock::now();
  if (count != 2 || CreateProcessW(nullptr, arguments[1], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                   &process) == FALSE) {
    throw std::runtime_error("the program does not start");
  }
  HWND window = nullptr;
  while ((window = VisibleWindow(process.dwProcessId)) == nullptr) {
    if (Milliseconds(Clock::now() - started).count() > kPatience) {
      throw std::runtime_error("the program shows no window");
    }
    Sleep(kLook);
  }
  const Milliseconds start = Clock::now() - started;

  Sleep(kSettled);
  RECT place;
  GetWindowRect(window, &place);
  const Clock::time_point asked = Clock::now();
  PostMessageW(window, WM_CLOSE, 0, 0);
  if (WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0) {
    throw std::runtime_error("the program does not end");
  }
  const Milliseconds close = Clock::now() - asked;
  std::printf("%.3f\t%.3f\t%ld\t%ld\n", start.count(), close.count(), place.right - place.left,
              place.bottom - place.top);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "stopwatch: %s\n", error.what());
  return 1;
}
