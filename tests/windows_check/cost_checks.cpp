// Time, memory and handles.

#include <windows.h>
// Needs windows.h first.
#include <psapi.h>

#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/program.h"

namespace check {

namespace {

struct Resources {
  long long memory, handles, gdi, user;
};

Resources ResourcesOf(const Process& process) {
  PROCESS_MEMORY_COUNTERS_EX memory{};
  GetProcessMemoryInfo(process.Handle(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  DWORD handles = 0;
  GetProcessHandleCount(process.Handle(), &handles);
  return {.memory = static_cast<long long>(memory.PrivateUsage),
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

int ManyUpdates(const Stage& stage) { return stage.Quick() ? 200 : 2000; }

Outcome Updates(const Stage& stage) {
  const Program program(stage);
  const ULONGLONG start = GetTickCount64();
  UpdateOften(program, ManyUpdates(stage));
  const ULONGLONG time = GetTickCount64() - start;
  return program.TheProcess().Ended()
             ? Failed(L"a running program", L"an ended one")
             : Ok(std::to_wstring(ManyUpdates(stage)) + L" in " + std::to_wstring(time) + L" ms");
}

/// The first updates fill the system's caches. Later ones must not leave anything behind.
Outcome ResourcesAfterUpdates(const Stage& stage) {
  constexpr long long kMemory = 256 * 1024;
  constexpr long long kFew = 4;
  const Program program(stage);
  UpdateOften(program, 100);
  const Resources before = ResourcesOf(program.TheProcess());
  if (before.gdi == 0) {
    return NotHere(L"the system does not count the objects of other processes");
  }
  UpdateOften(program, ManyUpdates(stage));
  const Resources after = ResourcesOf(program.TheProcess());
  const bool good = after.memory <= before.memory + kMemory && after.handles <= before.handles + kFew &&
                    after.gdi <= before.gdi + kFew && after.user <= before.user + kFew;
  const std::wstring seen = L"before " + Text(before) + L"; after " + Text(after);
  return good ? Ok(seen) : Failed(L"as many after as before", seen);
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

Outcome QuietMinute(const Stage& stage) {
  constexpr DWORD kMinute = 60000;
  constexpr long long kBusy = 1000;
  if (stage.Quick()) {
    return NotHere(L"--quick");
  }
  const Program program(stage);
  const Process empty(OwnCommand(L"--empty-window"));
  Sleep(3000);
  const long long programBefore = ProcessorTime(program.TheProcess());
  const long long emptyBefore = ProcessorTime(empty);
  Sleep(kMinute);
  const long long time = ProcessorTime(program.TheProcess()) - programBefore;
  const std::wstring seen =
      std::to_wstring(time) + L" ms, an empty window " + std::to_wstring(ProcessorTime(empty) - emptyBefore) + L" ms";
  return time < kBusy ? Ok(seen) : Failed(L"less than " + std::to_wstring(kBusy) + L" ms", seen);
}

}  // namespace

std::vector<Check> CostChecks() {
  return {
      {L"many updates", Updates},
      {L"memory and handles after many updates", ResourcesAfterUpdates},
      {L"processor time of a quiet minute", QuietMinute},
  };
}

}  // namespace check
