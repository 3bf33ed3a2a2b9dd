// A shell32.dll beside the program. It passes each call on to the real one, C:\real_shell32.dll.
//
// It appends each call to the file "tray-calls" beside the program: a TrayEntry, with the icon's pixels (blue, green,
// red, 0) on magenta. bench/program.py has the same layout.
//
// Files beside the program change what it does:
//
//   tray-refuses        every call fails, as without a shell
//   tray-clicks         before it answers, the user ticks the southern view
//   tray-ends-session   before it answers, the session ends
//   planted.dll         it loads this library by its bare name, as the system's libraries load others; if that
//                       works, it makes the file "planted-loaded"
//   scenario            see scenario.h

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "faults.h"
#include "scenario.h"
#include "sight.h"

namespace {

std::vector<DWORD> PixelsOf(HICON icon) {
  const Pixels pixels(kIconSize, kIconSize);
  const HBRUSH magenta = CreateSolidBrush(RGB(255, 0, 255));
  const RECT all = {0, 0, kIconSize, kIconSize};
  FillRect(pixels.dc(), &all, magenta);
  DrawIconEx(pixels.dc(), 0, 0, icon, kIconSize, kIconSize, 0, nullptr, DI_NORMAL);
  DeleteObject(magenta);
  return pixels.All();
}

BOOL CallTheRealOne(DWORD command, Record* record) {
  static const auto real = reinterpret_cast<BOOL(WINAPI*)(DWORD, void*)>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"C:\\real_shell32.dll"), "Shell_NotifyIconA")));
  return real(command, record);
}

bool Exists(const wchar_t* name) { return std::filesystem::exists(BesideTheProgram(name)); }

}  // namespace

extern "C" __declspec(dllexport) BOOL WINAPI Shell_NotifyIconA(DWORD command, Record* record) {
  TrayEntry entry = {command, FALSE, *record, {}};
  std::ranges::copy(PixelsOf(record->icon), entry.pixels);
  if (Exists(L"planted.dll") && LoadLibraryW(L"planted.dll") != nullptr) {
    std::ofstream(BesideTheProgram(L"planted-loaded"));
  }
  if (Exists(L"tray-clicks")) {
    SendMessageW(Option(kSouth), BM_CLICK, 0, 0);
  }
  if (Exists(L"tray-ends-session")) {
    SendMessageW(Main(), WM_ENDSESSION, TRUE, 0);
  }
  entry.result = Exists(L"tray-refuses") ? FALSE
                 : InScenario()          ? AnswerOfTheShell(entry)
                                         : CallTheRealOne(command, record);
  std::ofstream(BesideTheProgram(L"tray-calls"), std::ios::binary | std::ios::app)
      .write(reinterpret_cast<const char*>(&entry), sizeof entry);
  return entry.result;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    BeginScenario();
  } else if (reason == DLL_PROCESS_DETACH && InScenario()) {
    WriteJournal();
  }
  return TRUE;
}
