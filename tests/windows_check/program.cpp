#include "windows_check/program.h"

#include "report/frmMoon.h"
#include "report/frmMoon_layout.h"
#include "support/other_windows_win.h"
#include "tray/frmAbout.h"
#include "windows_check/check.h"
#include "windows_check/tray.h"

namespace check {

namespace {

namespace fs = std::filesystem;
namespace layout = tidewell::frmMoonLayout;

/// When this process ends, however it ends, the system ends every process in this job.
HANDLE TheJob() {
  static const HANDLE job = [] {
    const HANDLE made = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return made;
  }();
  return job;
}

void Remove(const fs::path& path) {
  std::error_code ignored;
  fs::remove(path, ignored);
}

/// Removes the settings file: each start is a first one.
std::wstring CommandOfAFirstStart(const Stage& stage) {
  Remove(stage.SettingsFile());
  return stage.Command();
}

}  // namespace

Stage::Stage(const fs::path& program, bool quick) : quick_(quick) {
  // The blanks are on purpose: the program must cope with them.
  const fs::path folder = fs::temp_directory_path() / (L"Tidewell check " + std::to_wstring(GetCurrentProcessId()));
  if (!fs::create_directory(folder)) {
    throw fs::filesystem_error("the folder already exists", folder, std::make_error_code(std::errc::file_exists));
  }
  folder_ = folder;
  try {
    fs::copy_file(program, Program());
  } catch (...) {
    Remove(folder_);
    throw;
  }
}

Stage::~Stage() {
  for (const fs::path& path : {SettingsFile(), Program(), folder_}) {
    Remove(path);
  }
}

Process::Process(const std::wstring& commandLine, int show) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION started{};
  std::wstring writable = commandLine;
  if (CreateProcessW(nullptr, writable.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr, &start,
                     &started) == FALSE) {
    throw Failed(commandLine + L" started", L"error " + std::to_wstring(GetLastError()));
  }
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  id_ = started.dwProcessId;
  AssignProcessToJobObject(TheJob(), process_.get());  // Windows 7 refuses if this process is in a job
}

Process::~Process() {
  if (!Ended()) {
    TerminateProcess(process_.get(), 1);
    WaitForSingleObject(process_.get(), kPatience);
  }
}

DWORD Process::WaitForEnd() const {
  if (WaitForSingleObject(process_.get(), kPatience) != WAIT_OBJECT_0) {
    throw Failed(L"the end of the process", L"none within 20 s");
  }
  DWORD status = 0;
  GetExitCodeProcess(process_.get(), &status);
  return status;
}

HWND Process::Window(const std::wstring& windowClass) const {
  for (const HWND window : support::WindowsOf(id_)) {
    if (support::ClassOf(window) == windowClass) {
      return window;
    }
  }
  return nullptr;
}

HWND Process::ShownWindow(const std::wstring& windowClass) const {
  return Until(L"a shown window of the class " + windowClass, [&]() -> HWND {
    const HWND window = Window(windowClass);
    return window != nullptr && IsWindowVisible(window) != FALSE ? window : nullptr;
  });
}

std::wstring OwnCommand(const std::wstring& role) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return L"\"" + path + L"\" " + role;
}

Program::Program(const Stage& stage, int show) : process_(CommandOfAFirstStart(stage), show) {
  about_ = Until(L"the program's windows", [this] { return process_.Window(tidewell::frmAbout::kWindowClass); });
  main_ = process_.Window(tidewell::frmMoon::kWindowClass);
  // The start is over when its thread waits for messages; the icon is there then.
  WaitForInputIdle(process_.Handle(), kPatience);
  support::Ask(main_, WM_NULL);
  if (show == SW_SHOWNORMAL) {
    WaitUntilShown(true);
  }
}

Program::~Program() {
  if (!process_.Ended()) {
    support::Ask(main_, WM_ENDSESSION, TRUE);
    if (WaitForSingleObject(process_.Handle(), kPatience) != WAIT_OBJECT_0) {
      RemoveIcon(about_);
    }
  }
}

HWND Program::Option(int index) const noexcept {
  return GetDlgItem(GetDlgItem(main_, layout::kFrame1), layout::kCheck1 + index);
}

HWND Program::CloseButton() const noexcept { return GetDlgItem(main_, layout::kCommand1Description.id); }

HWND Program::Menu() const {
  // EnumWindows omits menus on Windows.
  HWND menu = nullptr;
  while ((menu = FindWindowExW(nullptr, menu, L"#32768", nullptr)) != nullptr) {
    DWORD owner = 0;
    GetWindowThreadProcessId(menu, &owner);
    if (owner == process_.Id() && IsWindowVisible(menu) != FALSE) {
      return menu;
    }
  }
  return nullptr;
}

void Program::Update() const {
  constexpr WPARAM kTimer1 = 1;
  support::Ask(main_, WM_TIMECHANGE);
  support::Ask(main_, WM_TIMER, kTimer1);
}

void Program::WaitUntilShown(bool shown) const {
  Until(shown ? L"the main window shown" : L"the main window hidden", [&] { return Visible() == shown; });
}

Check::Check(const wchar_t* its, Outcome (*of)(const Program& program))
    : name(its), run([of](const Stage& stage) { return of(Program(stage)); }) {}

void ClickWithin(HWND window, POINT at) {
  const HWND there = WindowFromPoint(at);
  if (GetAncestor(there, GA_ROOT) != GetAncestor(window, GA_ROOT)) {
    throw NotHere(L"a window of " + NameOf(there) + L" covers that of " + NameOf(window));
  }
  support::Click(at);
}

void ClickOn(HWND control, bool atItsLeft) {
  RECT place{};
  GetWindowRect(control, &place);
  if (atItsLeft) {
    place.right = place.left + (place.bottom - place.top);
  }
  ClickWithin(control, MiddleOf(place));
}

std::wstring NameOf(HWND window) { return window == nullptr ? L"nobody" : support::ClassOf(window); }

}  // namespace check
