// The start: imports, time to the window, and other ways to start.

#include <algorithm>
#include <sstream>

#include "report/frmMoon.h"
#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/tray.h"

namespace check {

namespace {

/// A library and an imported function, as in "user32.dll GetMessageW".
struct Import {
  std::string library, function;
};

/// Reads a program's imports without running it. Ours has no imports by number.
std::vector<Import> ImportsOf(const std::filesystem::path& program) {
  const HMODULE module = LoadLibraryExW(program.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  auto* const base = reinterpret_cast<const BYTE*>(module);
  const auto* const headers =
      reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  std::vector<Import> imports;
  for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); library->Name != 0;
       ++library) {
    std::string name = reinterpret_cast<const char*>(base + library->Name);
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    for (const auto* entry = reinterpret_cast<const DWORD*>(base + library->OriginalFirstThunk); *entry != 0; ++entry) {
      imports.push_back({name, reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + *entry)->Name});
    }
  }
  FreeLibrary(module);
  return imports;
}

/// The imports that Windows 7 has: the list of the release tests.
std::string AllowedImports() {
  const HRSRC list = FindResourceW(nullptr, L"IMPORTS", RT_RCDATA);
  const auto* const text = static_cast<const char*>(LockResource(LoadResource(nullptr, list)));
  return "\n" + std::string(text, SizeofResource(nullptr, list)) + "\n";
}

Outcome Imports(const Stage& stage) {
  const std::string allowed = AllowedImports();
  const std::vector<Import> imports = ImportsOf(stage.Program());
  Facts facts;
  for (const auto& [library, function] : imports) {
    const std::wstring name = support::Wide(library + " " + function);
    facts.Want(name, 1, allowed.find("\n" + library + " " + function + "\n") != std::string::npos);
    facts.Want(name + L" in this Windows", 1,
               GetProcAddress(LoadLibraryA(library.c_str()), function.c_str()) != nullptr);
  }
  return facts.Result(std::to_wstring(imports.size()) + L" functions");
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
Outcome Start(const Stage& stage) {
  double program = kPatience;
  double empty = kPatience;
  for (int turn = 0; turn < 3; ++turn) {
    empty = std::min(empty, StartTime(OwnCommand(L"--empty-window"), L"EmptyWindow"));
    program = std::min(program, StartTime(stage.Command(), tidewell::frmMoon::kWindowClass));
  }
  std::wostringstream seen;
  seen.precision(0);
  seen << std::fixed << program << L" ms to the window, an empty one " << empty << L" ms";
  return Ok(seen.str());
}

Outcome SecondCopy(const Stage& stage) {
  const Program program(stage);
  const Process second(stage.Command());
  Facts facts;
  facts.Want(L"its exit status", 0, second.WaitForEnd());
  facts.Want(L"the first one ended", 0, program.TheProcess().Ended());
  facts.Want(L"the first one shown", 1, program.Visible());
  return facts.Result();
}

bool IsInFront(const Program& program) {
  const HWND foreground = GetForegroundWindow();
  return foreground == program.Main() || foreground == program.About();
}

Outcome MinimisedStart(const Stage& stage) {
  const Program program(stage, SW_SHOWMINNOACTIVE);
  Facts facts;
  facts.Want(L"shown", 0, program.Visible());
  facts.Want(L"the icon stands", 1, IconStands(program.About()));
  facts.Want(L"in the foreground", 0, IsInFront(program));
  SendIconMessage(program, WM_LBUTTONUP);
  program.WaitUntilShown(true);
  facts.Want(L"minimised after a click on the icon", 0, IsIconic(program.Main()));
  return facts.Result();
}

Outcome MinimisedWindow(const Program& program) {
  support::Ask(program.Main(), WM_SYSCOMMAND, SC_MINIMIZE);
  Until(L"a minimised window", [&] { return IsIconic(program.Main()) != FALSE; });
  SendIconMessage(program, WM_LBUTTONUP);
  Until(L"a restored window", [&] { return IsIconic(program.Main()) == FALSE && program.Visible(); });
  return Ok();
}

}  // namespace

std::vector<Check> StartChecks() {
  return {
      {L"imports", Imports},
      {L"start", Start},
      {L"second copy", SecondCopy},
      {L"minimised start", MinimisedStart},
      {L"minimised window and a click on the icon", MinimisedWindow},
  };
}

}  // namespace check
