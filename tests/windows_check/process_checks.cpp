// The process: its start, what it costs, its end.

#include <windows.h>
// Needs windows.h first.
#include <psapi.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "report/frmMoon.h"
#include "windows_check/program.h"

namespace {

/// The release tests compare the program's imports with this list. A line is a library and its functions.
TEST(Start, NeedsNoImportThatThisWindowsLacks) {
  const HRSRC list = FindResourceW(nullptr, L"IMPORTS", RT_RCDATA);
  const auto* const text = static_cast<const char*>(LockResource(LoadResource(nullptr, list)));
  std::istringstream lines(std::string(text, SizeofResource(nullptr, list)));
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string library, function;
    for (words >> library; words >> function; ++count) {
      EXPECT_NE(GetProcAddress(LoadLibraryA(library.c_str()), function.c_str()), nullptr) << library << " " << function;
    }
  }
  EXPECT_GT(count, 50);
}

/// Milliseconds from the start of a process to its window.
double StartTime(const std::wstring& command, const std::wstring& windowClass) {
  LARGE_INTEGER frequency, start, end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  const Process process(command);
  const HWND window = process.ShownWindow(windowClass);
  QueryPerformanceCounter(&end);
  support::Ask(window, WM_ENDSESSION, TRUE);  // so that the program removes its icon
  return 1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// The shortest of several times: other work of the machine only makes them longer.
TEST(Start, TakesSomeTime) {
  double program = kPatience;
  double empty = kPatience;
  for (int turn = 0; turn < 3; ++turn) {
    empty = std::min(empty, StartTime(OwnCommand(L"--empty-window"), L"EmptyWindow"));
    program = std::min(program, StartTime(Command(), tidewell::frmMoon::kWindowClass));
  }
  Note(std::to_wstring(std::lround(program)) + L" ms to the window, an empty one " +
       std::to_wstring(std::lround(empty)) + L" ms");
}

TEST(Start, OfASecondCopyEndsIt) {
  const Program program;
  EXPECT_EQ(Process(Command()).ExitStatus(), 0U);
  EXPECT_FALSE(program.Ended());
  EXPECT_TRUE(program.Visible());
}

TEST(Start, MinimisedGoesIntoTheTray) {
  const Program program(SW_SHOWMINNOACTIVE);
  EXPECT_FALSE(program.Visible());
  EXPECT_TRUE(program.IconStands());
  EXPECT_NE(GetForegroundWindow(), program.Main());
  EXPECT_NE(GetForegroundWindow(), program.About());
  program.SendIconMessage(WM_LBUTTONUP);
  program.WaitUntilShown(true);
  EXPECT_FALSE(IsIconic(program.Main()));
}

// ---- time, memory and handles

struct Resources {
  std::size_t memory;
  DWORD handles, gdi, user;
};

Resources ResourcesOf(const Process& process) {
  PROCESS_MEMORY_COUNTERS_EX memory{};
  GetProcessMemoryInfo(process.Handle(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  DWORD handles = 0;
  GetProcessHandleCount(process.Handle(), &handles);
  return {.memory = memory.PrivateUsage,
          .handles = handles,
          .gdi = GetGuiResources(process.Handle(), GR_GDIOBJECTS),
          .user = GetGuiResources(process.Handle(), GR_USEROBJECTS)};
}

std::wstring Text(const Resources& resources) {
  return std::to_wstring(resources.memory / 1024) + L" kB, " + std::to_wstring(resources.handles) + L" handles, " +
         std::to_wstring(resources.gdi) + L" GDI objects, " + std::to_wstring(resources.user) + L" USER objects";
}

/// The first updates fill the system's caches. Later ones must not leave anything behind.
TEST(Cost, OfManyUpdates) {
  constexpr std::size_t kMemory = 256 * 1024;
  constexpr DWORD kFew = 4;
  const Program program;
  const auto update = [&](int times) {
    while (times-- > 0) {
      program.Update();
    }
  };
  update(100);
  const Resources before = ResourcesOf(program);
  const ULONGLONG start = GetTickCount64();
  update(2000);
  const ULONGLONG time = GetTickCount64() - start;
  ASSERT_FALSE(program.Ended());
  const Resources after = ResourcesOf(program);
  Note(std::to_wstring(time) + L" ms; before " + Text(before) + L"; after " + Text(after));
  if (before.gdi == 0) {
    NotHere(L"the system does not count the objects of other processes");
  }
  EXPECT_LE(after.memory, before.memory + kMemory);
  EXPECT_LE(after.handles, before.handles + kFew);
  EXPECT_LE(after.gdi, before.gdi + kFew);
  EXPECT_LE(after.user, before.user + kFew);
}

/// In milliseconds.
long long ProcessorTime(const Process& process) {
  FILETIME created, ended, kernel, user;
  GetProcessTimes(process.Handle(), &created, &ended, &kernel, &user);
  const auto milliseconds = [](FILETIME time) {
    return static_cast<long long>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart / 10000);
  };
  return milliseconds(kernel) + milliseconds(user);
}

TEST(Cost, OfAQuietMinute) {
  const Program program;
  const Process empty(OwnCommand(L"--empty-window"));
  Sleep(3000);
  const long long programBefore = ProcessorTime(program);
  const long long emptyBefore = ProcessorTime(empty);
  Sleep(60000);
  const long long time = ProcessorTime(program) - programBefore;
  Note(std::to_wstring(time) + L" ms, an empty window " + std::to_wstring(ProcessorTime(empty) - emptyBefore) + L" ms");
  EXPECT_LT(time, 1000) << "milliseconds of processor time";
}

// ---- the ways to end: none leaves a process or an icon

/// Ends the program by an action and checks what is left.
template <class Action>
void EndBy(const Program& program, const Action& action) {
  const auto place = program.FindIcon();
  action();
  EXPECT_EQ(program.ExitStatus(), 0U);
  EXPECT_FALSE(program.IconStands() || (place && ShowsTheIcon(*place)));
  EXPECT_TRUE(support::ProcessesOf(L"Tidewell.exe").empty());
}

TEST(End, ByClose) {
  const Program program;
  EndBy(program, [&] { ClickOn(program.CloseButton()); });
}

TEST(End, ByACloseMessage) {
  const Program program;
  EndBy(program, [&] { PostMessageW(program.Main(), WM_CLOSE, 0, 0); });
}

TEST(End, ByExitInTheMenu) {
  const Program program;
  EndBy(program, [&] { ClickEntry(program.OpenMenu(), 2); });
}

TEST(End, WithTheSession) {
  const Program program;
  EXPECT_EQ(support::Ask(program.Main(), WM_QUERYENDSESSION), TRUE);
  support::Ask(program.Main(), WM_ENDSESSION, FALSE);
  EXPECT_FALSE(program.Ended()) << "the session continues";
  EndBy(program, [&] { support::Ask(program.Main(), WM_ENDSESSION, TRUE); });
}

}  // namespace
