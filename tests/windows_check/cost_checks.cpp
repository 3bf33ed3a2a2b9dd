// Time, memory and handles.

#include <windows.h>
// Needs windows.h first.
#include <psapi.h>

#include "windows_check/program.h"

namespace check {

namespace {

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

void UpdateOften(const Program& program, int times) {
  for (int update = 0; update < times; ++update) {
    program.Update();
  }
}

/// The first updates fill the system's caches. Later ones must not leave anything behind.
TEST(Cost, OfManyUpdates) {
  constexpr std::size_t kMemory = 256 * 1024;
  constexpr DWORD kFew = 4;
  const Program program;
  UpdateOften(program, 100);
  const Resources before = ResourcesOf(program.TheProcess());
  const ULONGLONG start = GetTickCount64();
  UpdateOften(program, 2000);
  const ULONGLONG time = GetTickCount64() - start;
  ASSERT_FALSE(program.Ended());
  const Resources after = ResourcesOf(program.TheProcess());
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
  const long long programBefore = ProcessorTime(program.TheProcess());
  const long long emptyBefore = ProcessorTime(empty);
  Sleep(60000);
  const long long time = ProcessorTime(program.TheProcess()) - programBefore;
  Note(std::to_wstring(time) + L" ms, an empty window " + std::to_wstring(ProcessorTime(empty) - emptyBefore) + L" ms");
  EXPECT_LT(time, 1000) << "milliseconds of processor time";
}

}  // namespace

}  // namespace check
