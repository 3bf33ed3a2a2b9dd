#include "windows_check/program.h"

// Needs windows.h first.
#include <shellapi.h>

#include "report/frmMoon.h"
#include "report/frmMoon_layout.h"
#include "tray/frmAbout.h"
#include "windows_check/screen.h"

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

constexpr UINT kIcon = 1;  // its id in the program
constexpr int kEntries = 3;

bool Notify(DWORD command, HWND owner) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  return Shell_NotifyIconW(command, &icon) != FALSE;
}

HRESULT AskForPlace(HWND owner, RECT& place) {
  NOTIFYICONIDENTIFIER icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  return Shell_NotifyIconGetRect(&icon, &place);
}

/// Wine's window for the icon; null on Windows.
HWND WindowOfIconInWine() {
  for (const DWORD shell : support::ProcessesOf(L"explorer.exe")) {
    for (const HWND window : support::WindowsOf(shell)) {
      if (support::ClassOf(window) == L"__winex11_tray_icon" && IsWindowVisible(window) != FALSE) {
        return window;
      }
    }
  }
  return nullptr;
}

/// Waits until the tray has moved that window out of the corner and it stands still; returns its place.
RECT PlaceOfIconInWine() {
  RECT place{};
  Until(L"an icon that stands still", [&] {
    const RECT before = place;
    Sleep(100);
    GetWindowRect(WindowOfIconInWine(), &place);
    return place.left > 0 && EqualRect(&place, &before) != FALSE;
  });
  return place;
}

/// A real click, if no other window covers the place.
void ClickWithin(HWND window, POINT at) {
  const HWND there = WindowFromPoint(at);
  if (GetAncestor(there, GA_ROOT) != GetAncestor(window, GA_ROOT)) {
    NotHere(L"a window of " + NameOf(there) + L" covers that of " + NameOf(window));
  }
  support::Click(at);
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

Program::Program(int show) : Process(CommandOfAFirstStart(), show) {
  about_ = Until(L"the program's windows", [this] { return Window(tidewell::frmAbout::kWindowClass); });
  main_ = Window(tidewell::frmMoon::kWindowClass);
  // The start is over when its thread waits for messages; the icon is there then.
  WaitForInputIdle(Handle(), kPatience);
  support::Ask(main_, WM_NULL);
  if (show == SW_SHOWNORMAL) {
    WaitUntilShown(true);
  }
}

Program::~Program() {
  if (!Ended()) {
    support::Ask(main_, WM_ENDSESSION, TRUE);
    if (!Ended(kPatience)) {
      RemoveIcon();
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
    if (owner == Id() && IsWindowVisible(menu) != FALSE) {
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

bool Program::IconStands() const {
  RECT place{};
  return Notify(NIM_MODIFY, about_) || SUCCEEDED(AskForPlace(about_, place));  // without flags: changes nothing
}

bool Program::RemoveIcon() const { return Notify(NIM_DELETE, about_); }

std::optional<RECT> Program::FindIcon() const {
  const PhysicalPixels physical;
  RECT place{};
  const HRESULT answer = AskForPlace(about_, place);
  if (answer == E_NOTIMPL) {
    place = PlaceOfIconInWine();
  } else if (FAILED(answer)) {
    return std::nullopt;
  }
  // For a hidden icon the system may return the place of the arrow.
  return ShowsTheIcon(place) ? std::optional(place) : std::nullopt;
}

RECT Program::PlaceOfIcon() const {
  const std::optional<RECT> place = FindIcon();
  if (!place) {
    NotHere(L"the icon is behind the arrow (drag it onto the taskbar), or the system does not tell its place");
  }
  return *place;
}

void Program::ClickIcon(bool right) const {
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon();
  support::Click(MiddleOf(place), right);
}

void Program::SendIconMessage(UINT message) const {
  SendNotifyMessageW(about_, WM_MOUSEMOVE, kIcon, static_cast<LPARAM>(message));
}

HWND Program::OpenMenu() const {
  if (FindIcon() || !Visible()) {
    ClickIcon(true);
  } else {
    ClickOn(main_);  // otherwise the system would refuse the menu the foreground
    SendIconMessage(WM_RBUTTONUP);
  }
  const HWND menu = Until(L"the menu", [&] { return Menu(); });
  Sleep(kPainting);
  return menu;
}

void Program::ShowAbout() const {
  ClickEntry(OpenMenu(), 0);
  Until(L"the About box", [&] { return IsWindowVisible(about_) != FALSE; });
}

void ClickOn(HWND control, bool atItsLeft) {
  RECT place{};
  GetWindowRect(control, &place);
  if (atItsLeft) {
    place.right = place.left + (place.bottom - place.top);
  }
  ClickWithin(control, MiddleOf(place));
}

bool ShowsTheIcon(const RECT& place) {
  const PhysicalPixels physical;
  const auto name = support::AccessibleNameAt(MiddleOf(place));
  return (name && name->starts_with(L"Moon's Age")) || WindowOfIconInWine() != nullptr;
}

void ClickEntry(HWND menu, int entry) {
  RECT place{};
  GetWindowRect(menu, &place);
  ClickWithin(menu, {.x = (place.left + place.right) / 2,
                     .y = place.top + (place.bottom - place.top) * (2 * entry + 1) / (2 * kEntries)});
}

std::wstring NameOf(HWND window) { return window == nullptr ? L"nobody" : support::ClassOf(window); }
