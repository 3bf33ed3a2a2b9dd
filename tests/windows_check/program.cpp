#include "windows_check/program.h"

#include "report/frmMoon.h"
#include "report/frmMoon_layout.h"
#include "tray/frmAbout.h"
#include "windows_check/check.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"

namespace check {

namespace {

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

/// Makes the next start a first one, with the pointer out of its way.
std::wstring CommandOfAFirstStart() {
  RestPointer();
  std::filesystem::remove(SettingsFile());
  return Command();
}

}  // namespace

std::wstring Command() { return L"\"" + CopyOfProgram().wstring() + L"\""; }

std::wstring OwnCommand(const std::wstring& role) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return L"\"" + path + L"\" " + role;
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
    throw std::runtime_error("cannot start " + support::Utf8(commandLine) + ": error " +
                             std::to_string(GetLastError()));
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

DWORD Process::ExitStatus() const {
  DWORD status = STILL_ACTIVE;
  if (Ended(kPatience)) {
    GetExitCodeProcess(process_.get(), &status);
  }
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
    return IsWindowVisible(window) != FALSE ? window : nullptr;
  });
}

Program::Program(int show) : process_(CommandOfAFirstStart(), show) {
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
  if (!Ended()) {
    support::Ask(main_, WM_ENDSESSION, TRUE);
    if (!process_.Ended(kPatience)) {
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

void ClickWithin(HWND window, POINT at) {
  const HWND there = WindowFromPoint(at);
  if (GetAncestor(there, GA_ROOT) != GetAncestor(window, GA_ROOT)) {
    NotHere(L"a window of " + NameOf(there) + L" covers that of " + NameOf(window));
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
