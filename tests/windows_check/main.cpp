// Checks a Tidewell.exe on this Windows.
//
//   windows_check [PROGRAM] [--gtest_filter=CHECKS]
//
// PROGRAM is by default the Tidewell.exe beside this file. The report goes to the screen and to tidewell-check.txt in
// the current folder, the pictures to tidewell-*.png. The program runs in a temporary folder. The exit status is 0 if
// the checks ran and none failed, otherwise 1. Do not touch the mouse.

#include <windows.h>
// Needs windows.h first.
#include <objbase.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "forms/controls_win.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

// The entry points of two small programs: some checks start this file again to run them beside Tidewell.
extern "C" int WINAPI RunEmptyWindow(HINSTANCE instance, HINSTANCE previous, PWSTR commandLine, int showCommand);
int RunTypewriter();

// Not GetVersionEx, which knows only the versions that this program's manifest names.
extern "C" LONG WINAPI RtlGetVersion(OSVERSIONINFOW* version);

namespace {

int Density() { return static_cast<int>(1440 / forms::ReadTwipsPerPixel().x); }

std::string DescribeMachine() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  RtlGetVersion(&version);
  wchar_t locale[LOCALE_NAME_MAX_LENGTH] = L"";
  GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
  DYNAMIC_TIME_ZONE_INFORMATION zone{};
  GetDynamicTimeZoneInformation(&zone);
  const int seen = Density();
  const PhysicalPixels physical;
  std::wostringstream machine;
  machine << L"Windows " << version.dwMajorVersion << L"." << version.dwMinorVersion << L", build "
          << version.dwBuildNumber << L"; density " << Density() << L", as the program sees it " << seen << L"; locale "
          << locale << L"; zone " << zone.TimeZoneKeyName << L", " << -zone.Bias << L" minutes";
  return support::Utf8(machine.str());
}

/// Writes a line about the machine, then one for each check.
class Report final : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest&) override { Write(DescribeMachine()); }

  void OnTestEnd(const testing::TestInfo& check) override {
    const testing::TestResult& result = *check.result();
    std::ostringstream line;
    line << check.test_suite_name() << '.' << check.name()
         << (result.Failed()    ? ": FAILED"
             : result.Skipped() ? ": not here"
                                : ": ok");
    for (int i = 0; i < result.test_property_count(); ++i) {
      line << ": " << result.GetTestProperty(i).value();
    }
    for (int i = 0; i < result.total_part_count(); ++i) {
      line << ": " << result.GetTestPartResult(i).message();
    }
    Write(line.str());
  }

  void Write(const std::string& line) {
    std::cout << line << std::endl;
    file_ << line << std::endl;
  }

  std::ofstream file_{"tidewell-check.txt"};
};

int RunAll(const std::filesystem::path& program) {
  if (!support::ProcessesOf(L"Tidewell.exe").empty()) {
    std::puts("Tidewell is running: please end it first.");
    return 1;
  }
  // With spaces: the program must cope with them.
  folder = std::filesystem::temp_directory_path() / (L"Tidewell check " + std::to_wstring(GetCurrentProcessId()));
  if (!std::filesystem::create_directory(folder)) {
    throw std::runtime_error("the folder already exists: " + folder.string());
  }
  std::error_code error;
  if (!std::filesystem::copy_file(program, CopyOfProgram(), error)) {
    std::printf("Cannot copy %s. Most checks will fail.\n", program.string().c_str());
  }
  const int status = RUN_ALL_TESTS();
  std::filesystem::remove_all(folder, error);
  return status;
}

}  // namespace

int wmain(int count, wchar_t* words[]) {
  const std::wstring role = count > 1 ? words[1] : L"";
  if (role == L"--typewriter") {
    return RunTypewriter();
  }
  if (role == L"--empty-window") {
    return RunEmptyWindow(GetModuleHandleW(nullptr), nullptr, nullptr, SW_SHOWNORMAL);
  }
  SetConsoleOutputCP(CP_UTF8);
  testing::InitGoogleTest(&count, words);  // takes its options out of the words
  testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  listeners.Append(new Report);
  CoInitialize(nullptr);
  const int status = RunAll(count > 1 ? words[1] : std::filesystem::path(words[0]).replace_filename(L"Tidewell.exe"));
  DWORD processes[2];
  if (GetConsoleProcessList(processes, 2) == 1) {  // this console is ours and would close at once
    std::puts("Press Enter.");
    std::getchar();
  }
  return status;
}
