#include "windows_check/process.h"

#include <vector>

#include "support/other_windows_win.h"
#include "windows_check/program.h"
#include "windows_check/waiting.h"

namespace check {

namespace {

/// The system ends the job with this process, and all its processes with the job.
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

}  // namespace

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

Typewriter::Typewriter() : process_(OwnCommand(L"--typewriter")), window_(process_.ShownWindow(L"Edit")) {
  SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  ClickOn(window_);
  Until(L"the keyboard at the second program", [this] { return HasTheKeyboard(); });
}

void Typewriter::Type(const std::wstring& letters) const {
  for (const wchar_t letter : letters) {
    INPUT inputs[2] = {};
    inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
    inputs[0].ki.wScan = inputs[1].ki.wScan = static_cast<WORD>(letter);
    inputs[0].ki.dwFlags = KEYEVENTF_UNICODE;
    inputs[1].ki.dwFlags = KEYEVENTF_UNICODE | KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof(INPUT));
  }
}

void Typewriter::WaitForText(const std::wstring& text) const {
  Until(L"'" + text + L"' in the second program", [&] { return support::TextOf(window_) == text; });
}

}  // namespace check
