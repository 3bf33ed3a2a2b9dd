// Checks a Tidewell.exe on the Windows that it is started on.
//
//   windows_check [--quick] [--only TEXT] [PROGRAM]
//
// PROGRAM is by default the Tidewell.exe beside this file; TEXT is a part of the names of the checks that are wanted.
// --quick makes fewer updates and leaves the quiet minute out. The report goes to the screen and, like the pictures,
// into the current folder: tidewell-check.txt, tidewell-*.png. All else happens in a folder of its own among the
// temporary ones. It ends with 0, or with 1 if a check has failed. Leave the mouse alone meanwhile.

#include <windows.h>
// After windows.h, which they build on.
#include <objbase.h>
#include <shellapi.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/machine.h"
#include "windows_check/screen.h"

// The windows that the program is checked beside, which are programs of their own elsewhere.
extern "C" int WINAPI RunEmptyWindow(HINSTANCE instance, HINSTANCE previous, PWSTR commandLine, int showCommand);
int RunTypewriter();

namespace check {

namespace {

/// Writes to the screen and to the file.
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
      WriteFile(screen, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);  // no console, but a file
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
    return Failed(L"an end of the check", support::Wide(error.what()));
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
  for (const auto& group : {StartChecks(), ReportChecks(), WindowChecks(), PictureChecks(), TrayChecks(), MenuChecks(),
                            OptionChecks(), EndingChecks(), CostChecks()}) {
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

std::vector<std::wstring> Arguments() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> arguments(words, words + count);
  LocalFree(words);
  return arguments;
}

}  // namespace

}  // namespace check

int main() {
  std::vector<std::wstring> arguments = check::Arguments();
  std::filesystem::path program = std::filesystem::path(arguments.at(0)).replace_filename(L"Tidewell.exe");
  bool quick = false;
  std::wstring only;
  for (std::size_t number = 1; number < arguments.size(); ++number) {
    if (arguments[number] == L"--typewriter") {
      return RunTypewriter();
    }
    if (arguments[number] == L"--empty-window") {
      return RunEmptyWindow(GetModuleHandleW(nullptr), nullptr, nullptr, SW_SHOWNORMAL);
    }
    if (arguments[number] == L"--quick") {
      quick = true;
    } else if (arguments[number] == L"--only" && number + 1 < arguments.size()) {
      only = arguments[++number];
    } else {
      program = arguments[number];
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
  if (GetConsoleProcessList(processes, 2) == 1) {  // a console of its own, which would close at once
    std::puts("Press Enter.");
    std::getchar();
  }
  return status;
}
