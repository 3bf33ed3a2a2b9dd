#include "scenario.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <vector>

#include "faults.h"
#include "sight.h"

namespace {

// Exit statuses of our own.
constexpr UINT kNotEnded = 96;
constexpr UINT kCrashed = 97;
constexpr UINT kBusy = 98;

constexpr unsigned kBusyCalls = 20000;  ///< most calls between two steps; a run without faults needs a few hundred
constexpr int kTries = 3;
constexpr int kTicks = 3;                    ///< in the minute between "now" and "later"
constexpr std::uint64_t kSecond = 10000000;  ///< in units of a file time
constexpr std::uint64_t kDay = 86400;        ///< seconds
constexpr std::uint64_t kSlot = 300;         ///< seconds of a step, all tries included: a retry delays no later step

std::string scenario;

// ---- clock and timers

/// Noon and ten seconds of a day, as a file time.
std::uint64_t NoonOf(WORD year, WORD month, WORD day) {
  SYSTEMTIME time{};
  time.wYear = year;
  time.wMonth = month;
  time.wDay = day;
  time.wHour = 12;
  time.wSecond = 10;
  ULARGE_INTEGER noon{};
  SystemTimeToFileTime(&time, reinterpret_cast<FILETIME*>(&noon));
  return noon.QuadPart;
}

std::uint64_t clock = NoonOf(2024, 2, 28);

void WINAPI SupplyGetLocalTime(SYSTEMTIME* time) { FileTimeToSystemTime(reinterpret_cast<FILETIME*>(&clock), time); }

struct Timer {
  HWND window;
  UINT_PTR id;
  bool operator==(const Timer&) const = default;
};
std::vector<Timer> timers;

UINT_PTR WINAPI SupplySetTimer(HWND window, UINT_PTR id, UINT, TIMERPROC) {
  if (std::find(timers.begin(), timers.end(), Timer{window, id}) == timers.end()) {
    timers.push_back({window, id});
  }
  return id;
}

BOOL WINAPI SupplyKillTimer(HWND window, UINT_PTR id) { return std::erase(timers, Timer{window, id}) > 0; }

void Tick(std::uint64_t seconds) {
  clock += seconds * kSecond;
  for (const Timer& timer : timers) {
    PostMessageW(timer.window, WM_TIMER, timer.id, 0);
  }
}

// ---- shell

std::optional<TrayEntry> icon;  // as the shell shows it

UINT FlagsOf(const TrayEntry& entry) {
  UINT flags = 0;
  std::memcpy(&flags, entry.record + 12, sizeof flags);
  return flags;
}

std::string TipOf(const TrayEntry& entry) {
  constexpr std::size_t kTip = 24;
  const auto* const text = reinterpret_cast<const char*>(entry.record) + kTip;
  return {text, strnlen(text, kRecordSize - kTip)};
}

// ---- what a user sees

std::string menu;  // the entries of the one that was opened last

/// Writes all that a user sees of the program.
void See(const std::string& name) {
  const std::string ofIcon =
      icon ? "there\ticon-picture=" + HashText(icon->pixels, sizeof icon->pixels) + "\ttip=" + TipOf(*icon)
           : "none\ticon-picture=\ttip=";
  Log("see\t" + name + "\ticon=" + ofIcon + "\tmenu=" + menu + WindowsAsSeen());
}

// ---- steps

const wchar_t* wantedEntry = nullptr;  // of the menu

void TellOfTheIcon(LPARAM message) {
  if (icon) {  // nobody can click on one that is not there
    PostMessageW(About(), WM_MOUSEMOVE, 1, message);
  }
}

void Click(HWND control) { PostMessageW(control, BM_CLICK, 0, 0); }

void Choose(const wchar_t* entry) {
  wantedEntry = entry;
  TellOfTheIcon(WM_RBUTTONUP);
}

void HideByTheIcon() {
  if (Shown(Main())) {
    TellOfTheIcon(WM_LBUTTONUP);
  }
}

void ShowByTheIcon() {
  if (IsIconic(Main()) != FALSE) {
    PostMessageW(Main(), WM_SYSCOMMAND, SC_RESTORE, 0);  // by its button in the task bar
  } else if (!Shown(Main())) {
    TellOfTheIcon(WM_LBUTTONUP);
  }
}

void LoseTheTaskBar() {
  icon.reset();
  Log("icon\tlost");
  const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
  for (const HWND window : {Main(), About()}) {
    PostMessageW(window, message, 0, 0);
  }
}

bool Anything() { return true; }
bool Never() { return false; }  // the program ends in this step

struct Step {
  const char* name;
  std::function<void()> act;
  std::function<bool()> reached;  ///< if not, the user tries again
};

const std::vector<Step> kShown = {
    {"start", [] {}, [] { return Shown(Main()) && icon; }},
    {"tick", [] { Tick(1); }, Anything},
    {"minute", [] { Tick(60); }, Anything},
    {"option", [] { Click(Option(L"Enable Southern Hemisphere View")); },
     [] { return Ticked(L"Enable Southern Hemisphere View"); }},
    {"hide", HideByTheIcon, [] { return !Shown(Main()); }},
    {"day", [] { Tick(6 * kDay); }, Anything},
    {"show", ShowByTheIcon, [] { return Shown(Main()); }},
    {"about", [] { Choose(L"About"); }, [] { return Shown(About()); }},
    {"ok", [] { Click(Button(About(), L"OK")); }, [] { return !Shown(About()); }},
    {"repaint", [] { RedrawWindow(Main(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN); }, Anything},
    {"task bar", LoseTheTaskBar, [] { return icon.has_value(); }},
    {"close", [] { Click(Button(Main(), L"Close")); }, Never},
};

const std::vector<Step> kHidden = {
    {"start", [] {}, [] { return Shown(Main()) && icon; }},
    {"option", [] { Click(Option(L"Restore in System Tray")); }, [] { return Ticked(L"Restore in System Tray"); }},
    {"close", [] { Click(Button(Main(), L"Close")); }, [] { return !Shown(Main()); }},
    {"day", [] { Tick(6 * kDay); }, Anything},
    {"task bar", LoseTheTaskBar, [] { return icon.has_value(); }},
    {"entry", [] { Choose(L"Show Main Window"); }, [] { return Shown(Main()); }},
    {"box", [] { PostMessageW(Main(), WM_CLOSE, 0, 0); }, [] { return !Shown(Main()); }},
    {"exit", [] { Choose(L"Exit"); }, Never},
    // Only if the menu does not come.
    {"show", ShowByTheIcon, [] { return Shown(Main()); }},
    {"untick", [] { Click(Option(L"Restore in System Tray")); }, [] { return !Ticked(L"Restore in System Tray"); }},
    {"end", [] { Click(Button(Main(), L"Close")); }, Never},
};

const std::vector<Step> kError = {
    {"start", [] {}, [] { return Shown(Main()) && icon; }},
    {"error",
     [] {
       clock = NoonOf(9999, 12, 30);
       Tick(1);
     },
     Never},
};

const std::vector<Step>* steps = nullptr;
std::size_t step = 0;
int phase = 0;
int tries = 0;
unsigned callsBefore = 0;
std::uint64_t slotEnd = 0;  // when the step ends, however often it was tried

void EndAtOnce(const std::string& why, UINT status) {
  Log(why);
  TerminateProcess(GetCurrentProcess(), status);
}

/// Does the next thing: acts, looks, lets a minute pass, looks again.
void GoOn() {
  const BenchAtWork atWork;
  callsBefore = CallsSoFar();
  if (step == steps->size()) {
    EndAtOnce("not ended", kNotEnded);
  }
  const Step& now = (*steps)[step];
  const std::string name = now.name;
  if (phase == 0) {
    if (tries == 0) {
      MarkJournal(name);
    }
    now.act();
    if (tries == 0) {
      slotEnd = clock + kSlot * kSecond;
    }
  } else if (phase == 1) {
    See(name + " now");
  } else if (phase < 2 + kTicks) {
    Tick(60 / kTicks);
  } else if (phase == 2 + kTicks) {
    if (now.reached()) {
      tries = 0;
    } else if (++tries < kTries) {
      Log("again\t" + name);
      phase = 0;
      return;
    } else {
      Log("missed\t" + name);
      tries = 0;
    }
    clock = slotEnd;
    Tick(0);
  } else {
    See(name + " later");
    ++step;
    phase = 0;
    return;
  }
  ++phase;
}

BOOL WINAPI SupplyGetMessageW(MSG* message, HWND window, UINT first, UINT last) {
  if (CallsSoFar() - callsBefore > kBusyCalls) {
    EndAtOnce("busy", kBusy);
  }
  while (PeekMessageW(message, window, first, last, PM_REMOVE) == FALSE) {
    GoOn();
  }
  return message->message != WM_QUIT;
}

BOOL WINAPI SupplyTrackPopupMenu(HMENU popup, UINT, int, int, int, HWND, const RECT*) {
  menu.clear();
  UINT chosen = 0;
  for (int place = 0; place < GetMenuItemCount(popup); ++place) {
    wchar_t text[80] = L"";
    GetMenuStringW(popup, static_cast<UINT>(place), text, 80, MF_BYPOSITION);
    menu += Narrow(text) + "|";
    if (wantedEntry != nullptr && lstrcmpW(text, wantedEntry) == 0) {
      chosen = GetMenuItemID(popup, place);
    }
  }
  wantedEntry = nullptr;
  return static_cast<BOOL>(chosen);
}

int WINAPI SupplyMessageBoxA(HWND, const char* text, const char* caption, UINT) {
  std::string line = std::string(caption) + ": " + text;
  std::replace(line.begin(), line.end(), '\n', ' ');
  Log("box\t" + line + (icon ? "\tbefore the icon had gone" : ""));
  return IDOK;
}

void WINAPI SupplyFatalAppExitA(UINT, const char* text) {
  SupplyMessageBoxA(nullptr, text, "fatal", 0);
  ExitProcess(1);
}

LPTOP_LEVEL_EXCEPTION_FILTER WINAPI SupplySetUnhandledExceptionFilter(LPTOP_LEVEL_EXCEPTION_FILTER) { return nullptr; }

LONG WINAPI OnCrash(EXCEPTION_POINTERS* exception) {
  char text[80];
  wsprintfA(text, "crash\t%08x at %08x", exception->ExceptionRecord->ExceptionCode,
            exception->ExceptionRecord->ExceptionAddress);
  EndAtOnce(text, kCrashed);
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void BeginScenario() {
  std::ifstream(BesideTheProgram(L"scenario").c_str()) >> scenario;
  if (InScenario()) {
    steps = scenario == "hidden" ? &kHidden : scenario == "error" ? &kError : &kShown;
    SetUnhandledExceptionFilter(OnCrash);
  }
}

bool InScenario() { return !scenario.empty(); }

void* Supply(const std::string& name) {
  struct Supplied {
    const char* name;
    void* function;
  };
  static const Supplied kSupplied[] = {
      {"GetLocalTime", reinterpret_cast<void*>(&SupplyGetLocalTime)},
      {"SetTimer", reinterpret_cast<void*>(&SupplySetTimer)},
      {"KillTimer", reinterpret_cast<void*>(&SupplyKillTimer)},
      {"GetMessageW", reinterpret_cast<void*>(&SupplyGetMessageW)},
      {"TrackPopupMenu", reinterpret_cast<void*>(&SupplyTrackPopupMenu)},
      {"MessageBoxA", reinterpret_cast<void*>(&SupplyMessageBoxA)},
      {"FatalAppExitA", reinterpret_cast<void*>(&SupplyFatalAppExitA)},
      {"SetUnhandledExceptionFilter", reinterpret_cast<void*>(&SupplySetUnhandledExceptionFilter)},
  };
  if (InScenario()) {
    for (const Supplied& supplied : kSupplied) {
      if (name == supplied.name) {
        return supplied.function;
      }
    }
  }
  return nullptr;
}

BOOL AnswerOfTheShell(const TrayEntry& entry) {
  if (entry.command == NIM_ADD) {
    if (icon) {
      return FALSE;
    }
    icon = entry;
    Log("icon\tadded");
    return TRUE;
  }
  if (!icon) {
    return FALSE;
  }
  if (entry.command == NIM_DELETE) {
    icon.reset();
    Log("icon\tremoved");
    return TRUE;
  }
  const TrayEntry before = *icon;
  icon = entry;
  if ((FlagsOf(entry) & NIF_ICON) == 0) {
    std::memcpy(icon->pixels, before.pixels, sizeof before.pixels);
  }
  if ((FlagsOf(entry) & NIF_TIP) == 0) {
    std::memcpy(icon->record + 24, before.record + 24, kRecordSize - 24);
  }
  return TRUE;
}

void EndScenario() {
  if (InScenario()) {
    Log(std::string("end\t") + (icon ? "icon left" : "no icon"));
    WriteJournal();
  }
}
