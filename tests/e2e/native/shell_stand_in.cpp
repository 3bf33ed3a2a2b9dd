// A shell32.dll beside the program. It hands each call on to the real one, C:\real_shell32.dll.
//
// It appends each call to the file "tray-calls" beside the program: command, result, the 88 bytes of the caller's
// record, and the icon as 16 x 16 pixels (blue, green, red, 0) on magenta. bench/program.py has the same layout.
//
// Files beside the program change what it does:
//
//   tray-refuses        every call fails, as without a shell
//   tray-clicks         before it answers, somebody ticks the southern view
//   tray-ends-session   before it answers, the session ends
//   planted.dll         it loads this library by its bare name, as the system's libraries load others; if that
//                       works, it makes the file "planted-loaded"
//   scenario            see scenario.h

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstring>
#include <fstream>
#include <vector>

#include "faults.h"
#include "scenario.h"
#include "sight.h"

namespace {

constexpr COLORREF kMagenta = RGB(255, 0, 255);

std::vector<DWORD> PixelsOf(HICON icon) {
  return PixelsPaintedBy(kIconSize, kIconSize, [&](HDC dc) {
    const HBRUSH magenta = CreateSolidBrush(kMagenta);
    const RECT all = {0, 0, kIconSize, kIconSize};
    FillRect(dc, &all, magenta);
    DrawIconEx(dc, 0, 0, icon, kIconSize, kIconSize, 0, nullptr, DI_NORMAL);
    DeleteObject(magenta);
  });
}

using NotifyIcon = BOOL(WINAPI*)(DWORD, void*);

BOOL CallTheRealOne(DWORD command, void* record) {
  static const auto real = reinterpret_cast<NotifyIcon>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"C:\\real_shell32.dll"), "Shell_NotifyIconA")));
  return real != nullptr ? real(command, record) : FALSE;
}

bool Exists(const wchar_t* name) {
  return GetFileAttributesW(BesideTheProgram(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void Append(const TrayEntry& entry) {
  std::ofstream(BesideTheProgram(L"tray-calls").c_str(), std::ios::binary | std::ios::app)
      .write(reinterpret_cast<const char*>(&entry), sizeof entry);
}

}  // namespace

extern "C" __declspec(dllexport) BOOL WINAPI Shell_NotifyIconA(DWORD command, void* record) {
  TrayEntry entry{};
  entry.command = command;
  std::memcpy(entry.record, record, kRecordSize);
  HICON icon = nullptr;
  std::memcpy(&icon, entry.record + 20, sizeof icon);
  std::memcpy(entry.pixels, PixelsOf(icon).data(), sizeof entry.pixels);
  if (Exists(L"planted.dll") && LoadLibraryW(L"planted.dll") != nullptr) {
    std::ofstream(BesideTheProgram(L"planted-loaded").c_str());
  }
  if (Exists(L"tray-clicks")) {
    SendMessageW(Option(L"Enable Southern Hemisphere View"), BM_CLICK, 0, 0);
  }
  if (Exists(L"tray-ends-session")) {
    SendMessageW(Main(), WM_ENDSESSION, TRUE, 0);
  }
  const BOOL result = Exists(L"tray-refuses") ? FALSE
                      : InScenario()          ? AnswerOfTheShell(entry)
                                              : CallTheRealOne(command, record);
  entry.result = static_cast<DWORD>(result);
  Append(entry);
  return result;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    BeginScenario();
  } else if (reason == DLL_PROCESS_DETACH && InScenario()) {
    WriteJournal();
  }
  return TRUE;
}
