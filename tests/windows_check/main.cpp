// Checks a Tidewell.exe on this Windows.
//
//   windows_check [--quick] [--only TEXT] [PROGRAM]
//
// PROGRAM is by default the Tidewell.exe beside this file. --only runs the checks whose names contain TEXT. --quick
// makes fewer updates and skips the quiet minute. The report goes to the screen and to tidewell-check.txt in the
// current folder, the pictures to tidewell-*.png. The program runs in a temporary folder. The exit status is 1 if a
// check failed, otherwise 0. Leave the mouse alone meanwhile.

#include <windows.h>
// These need windows.h first.
#include <objbase.h>
#include <shellapi.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/machine.h"
#include "windows_check/screen.h"

// From two other programs: the windows beside which Tidewell is checked.
extern "C" int WINAPI RunEmptyWindow(HINSTANCE instance, HINSTANCE previous, PWSTR commandLine, int showCommand);
int RunTypewriter();

namespace check {

namespace {

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
  if (GetConsoleProcessList(processes, 2) == 1) {  // this console is ours and would close at once
    std::puts("Press Enter.");
    std::getchar();
  }
  return status;
}
