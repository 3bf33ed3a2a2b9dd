// Times programs from inside Windows.
//
// stopwatch race ROUNDS PROGRAM...  Starts and closes the programs in turn. Prints for each run: the program's number,
//                                   ms from start to visible window, ms from WM_CLOSE to the end, width, height.
// stopwatch hide CAPTION            Hides the window with that caption.

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr DWORD kLook = 1;           // ms
constexpr DWORD kPatience = 30'000;  // ms
/// After the timers' first tick, when the start is over.
constexpr DWORD kSettled = 1500;  // ms

struct Search {
  DWORD process;
  HWND found = nullptr;
};

BOOL CALLBACK TakeVisible(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.process || IsWindowVisible(window) == FALSE) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

/// The visible top-level window of a process, or null.
HWND VisibleWindow(DWORD process) {
  Search search = {.process = process};
  EnumWindows(TakeVisible, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

void Run(int number, std::wstring program) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process;
  const Clock::time_point started = Clock::now();
  if (CreateProcessW(nullptr, program.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process) ==
      FALSE) {
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
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  std::printf("%d\t%.3f\t%.3f\t%ld\t%ld\n", number, start.count(), close.count(), place.right - place.left,
              place.bottom - place.top);
}

}  // namespace

int wmain(int count, wchar_t** arguments) try {
  const std::wstring_view command = count > 2 ? arguments[1] : L"";
  if (command == L"race") {
    for (int round = std::stoi(arguments[2]); round > 0; --round) {
      for (int i = 3; i < count; ++i) {
        Run(i - 3, arguments[i]);
      }
    }
  } else if (command == L"hide") {
    const HWND window = FindWindowW(nullptr, arguments[2]);
    if (ShowWindow(window, SW_HIDE) == FALSE || IsWindowVisible(window) != FALSE) {
      throw std::runtime_error("there was no visible window to hide");
    }
  } else {
    return 2;
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "stopwatch: %s\n", error.what());
  return 1;
}
