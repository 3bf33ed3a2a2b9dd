// Checks a Tidewell.exe on this Windows.
//
//   windows_check [--quick] [--only TEXT] [PROGRAM]
//
// PROGRAM is by default the Tidewell.exe beside this file. --only runs the checks whose names contain TEXT. --quick
// makes fewer updates and skips the quiet minute. The report goes to the screen and to tidewell-check.txt in the
// current folder, the pictures to tidewell-*.png. The program runs in a temporary folder. The exit status is 1 if a
// check failed, otherwise 0. Leave the mouse alone meanwhile.

#include <windows.h>
// Needs windows.h first.
#include <objbase.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

// The entry points of two small programs: some checks start this file again to run them beside Tidewell.
extern "C" int WINAPI RunEmptyWindow(HINSTANCE instance, HINSTANCE previous, PWSTR commandLine, int showCommand);
int RunTypewriter();

namespace check {

namespace {

template <class Function>
Function FunctionOf(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

/// Not by GetVersionEx, which knows only the versions that this program's manifest names.
std::wstring Version() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  FunctionOf<LONG(WINAPI*)(OSVERSIONINFOW*)>(L"ntdll.dll", "RtlGetVersion")(&version);
  std::wstring text = std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion) +
                      L", build " + std::to_wstring(version.dwBuildNumber);
  if (const auto wine = FunctionOf<const char*(__cdecl*)()>(L"ntdll.dll", "wine_get_version")) {
    text += L" (Wine " + support::Wide(wine()) + L")";
  }
  return text;
}

std::wstring Density() {
  const HDC screen = GetDC(nullptr);
  const int density = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return std::to_wstring(density);
}

std::wstring RealDensity() {
  const PhysicalPixels physical;
  return Density();
}

std::wstring Locale() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
  GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
  return name;
}

std::wstring Zone() {
  DYNAMIC_TIME_ZONE_INFORMATION zone{};
  GetDynamicTimeZoneInformation(&zone);
  return std::wstring(zone.TimeZoneKeyName) + L", " + std::to_wstring(-zone.Bias) + L" minutes";
}

/// The first lines of the report.
std::wstring DescribeMachine() {
  return L"Windows " + Version() + L"\ndensity " + RealDensity() + L", as the program sees it " + Density() +
         L"\nlocale " + Locale() + L"\nzone " + Zone() + L"\n";
}

/// Writes to the screen and to a file.
class Log {
 public:
  Log() {
    if (!file_) {
      throw std::runtime_error("cannot write tidewell-check.txt into this folder");
    }
  }

  void Write(const std::wstring& text) {
    const std::string bytes = support::Utf8(text);
    file_ << bytes << std::flush;
    const HANDLE screen = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD written = 0;
    if (WriteConsoleW(screen, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) == FALSE) {
      WriteFile(screen, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);  // not a console but a file
    }
  }

 private:
  std::ofstream file_{"tidewell-check.txt", std::ios::binary};
};

Outcome Run(const Check& check, const Stage& stage) {
  try {
    RestPointer();
    return check.run(stage);
  } catch (const Outcome& outcome) {
    return outcome;
  } catch (const std::exception& error) {
    return Failed(L"the check to finish", support::Wide(error.what()));
  }
}

std::wstring Line(const Check& check, const Outcome& outcome) {
  const std::wstring text = outcome.text.empty() ? L"" : L": " + outcome.text;
  const wchar_t* const kinds[] = {L"ok", L"FAILED", L"not here"};
  return std::wstring(check.name) + L": " + kinds[static_cast<int>(outcome.kind)] + text + L"\n";
}

int RunAll(const std::filesystem::path& program, bool quick, const std::wstring& only) {
  Log log;
  log.Write(DescribeMachine() + L"\n");
  if (!support::ProcessesOf(L"Tidewell.exe").empty()) {
    log.Write(L"Tidewell is running: please end it first.\n");
    return 1;
  }
  const Stage stage(program, quick);
  int failures = 0;
  for (const auto& group :
       {StartChecks(), ReportChecks(), WindowChecks(), TrayChecks(), OptionChecks(), EndingChecks(), CostChecks()}) {
    for (const Check& check : group) {
      if (std::wstring(check.name).find(only) == std::wstring::npos) {
        continue;
      }
      const Outcome outcome = Run(check, stage);
      failures += outcome.kind == Outcome::Kind::Failed ? 1 : 0;
      log.Write(Line(check, outcome));
    }
  }
  log.Write(failures == 0 ? L"\nAll is well.\n" : L"\n" + std::to_wstring(failures) + L" FAILED\n");
  return failures == 0 ? 0 : 1;
}

}  // namespace

}  // namespace check

int wmain(int count, wchar_t* words[]) {
  std::filesystem::path program = std::filesystem::path(words[0]).replace_filename(L"Tidewell.exe");
  bool quick = false;
  std::wstring only;
  for (int number = 1; number < count; ++number) {
    const std::wstring word = words[number];
    if (word == L"--typewriter") {
      return RunTypewriter();
    }
    if (word == L"--empty-window") {
      return RunEmptyWindow(GetModuleHandleW(nullptr), nullptr, nullptr, SW_SHOWNORMAL);
    }
    if (word == L"--quick") {
      quick = true;
    } else if (word == L"--only" && number + 1 < count) {
      only = words[++number];
    } else {
      program = word;
    }
  }
  CoInitialize(nullptr);
  int status = 1;
  try {
    status = check::RunAll(program, quick, only);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "windows_check: %s\n", error.what());
  }
  DWORD processes[2];
  if (GetConsoleProcessList(processes, 2) == 1) {  // this console is ours and would close at once
    std::puts("Press Enter.");
    std::getchar();
  }
  return status;
}
