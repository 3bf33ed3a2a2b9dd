#include "scenario.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "faults.h"
#include "sight.h"

namespace {

constexpr unsigned kBusyCalls = 20000;  ///< limit between two steps; a run without faults needs a few hundred
constexpr int kTries = 3;
constexpr int kTicks = 3;                    ///< in the minute after each try
constexpr std::uint64_t kSecond = 10000000;  ///< in units of a file time
constexpr std::uint64_t kDay = 86400;        ///< seconds
constexpr std::uint64_t kSlot = 300;         ///< seconds of a step, all tries included: a retry delays no later step

// ---- clock and timers

/// Noon and ten seconds of a day, as a file time.
std::uint64_t NoonOf(WORD year, WORD month, WORD day) {
  const SYSTEMTIME time = {year, month, 0, day, 12, 0, 10, 0};
  std::uint64_t noon = 0;
  SystemTimeToFileTime(&time, reinterpret_cast<FILETIME*>(&noon));
  return noon;
}

std::uint64_t clock = NoonOf(2024, 2, 28);

void WINAPI SupplyGetLocalTime(SYSTEMTIME* time) { FileTimeToSystemTime(reinterpret_cast<FILETIME*>(&clock), time); }

std::set<std::pair<HWND, UINT_PTR>> timers;  // window and id

UINT_PTR WINAPI SupplySetTimer(HWND window, UINT_PTR id, UINT, TIMERPROC) {
  timers.emplace(window, id);
  return id;
}

BOOL WINAPI SupplyKillTimer(HWND window, UINT_PTR id) { return timers.erase({window, id}) > 0; }

void Tick(std::uint64_t seconds) {
  clock += seconds * kSecond;
  for (const auto& [window, id] : timers) {
    PostMessageW(window, WM_TIMER, id, 0);
  }
}

// ---- what a user sees

std::optional<TrayEntry> icon;  // as the shell shows it

std::string menu;  // the entries of the menu opened last

unsigned refusalsBefore = 0;

/// Logs what a user sees of the program, and whether calls have failed since the last time.
void See(const std::string& moment) {
  const std::string ofIcon = icon
                                 ? "there\ticon-picture=" + HashOf({std::begin(icon->pixels), std::end(icon->pixels)}) +
                                       "\ttip=" + std::string(icon->record.tip, sizeof icon->record.tip)
                                 : "none\ticon-picture=\ttip=";
  Log("see\t" + moment + "\ticon=" + ofIcon + "\tmenu=" + menu + WindowsAsSeen());
  if (RefusalsSoFar() != refusalsBefore) {
    Log("refused\t" + moment);
  }
  refusalsBefore = RefusalsSoFar();
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

void PassTheCalendarsEnd() {
  clock = NoonOf(9999, 12, 30);
  Tick(1);
}

bool Anything() { return true; }
bool Never() { return false; }  // the program ends in this step
bool Started() { return Shown(Main()) && icon; }
bool MainShown() { return Shown(Main()); }
bool MainHidden() { return !Shown(Main()); }

struct Step {
  const char* name;
  std::function<void()> act;
  std::function<bool()> reached;  ///< if not, the user tries again
};

const std::map<std::string, std::vector<Step>> kScenarios = {
    {"shown",
     {
         {"start", [] {}, Started},
         {"tick", [] { Tick(1); }, Anything},
         {"minute", [] { Tick(60); }, Anything},
         {"option", [] { Click(Option(kSouth)); }, [] { return Ticked(kSouth); }},
         {"hide", HideByTheIcon, MainHidden},
         {"day", [] { Tick(6 * kDay); }, Anything},
         {"show", ShowByTheIcon, MainShown},
         {"about", [] { Choose(L"About"); }, [] { return Shown(About()); }},
         {"ok", [] { Click(Button(About(), L"OK")); }, [] { return !Shown(About()); }},
         {"repaint", [] { RedrawWindow(Main(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN); },
          Anything},
         {"task bar", LoseTheTaskBar, [] { return icon.has_value(); }},
         {"close", [] { Click(Button(Main(), L"Close")); }, Never},
     }},
    {"hidden",
     {
         {"start", [] {}, Started},
         {"option", [] { Click(Option(kRestore)); }, [] { return Ticked(kRestore); }},
         {"close", [] { Click(Button(Main(), L"Close")); }, MainHidden},
         {"day", [] { Tick(6 * kDay); }, Anything},
         {"task bar", LoseTheTaskBar, [] { return icon.has_value(); }},
         {"entry", [] { Choose(L"Show Main Window"); }, MainShown},
         {"box", [] { PostMessageW(Main(), WM_CLOSE, 0, 0); }, MainHidden},
         {"exit", [] { Choose(L"Exit"); }, Never},
         // Reached only if the menu does not open.
         {"show", ShowByTheIcon, MainShown},
         {"untick", [] { Click(Option(kRestore)); }, [] { return !Ticked(kRestore); }},
         {"end", [] { Click(Button(Main(), L"Close")); }, Never},
     }},
    {"error",
     {
         {"start", [] {}, Started},
         {"error", PassTheCalendarsEnd, Never},
     }},
};

// ---- playing the steps: in a fiber, which goes on when the program waits for a message

std::string scenario;
void* program = nullptr;  // its fiber
void* player = nullptr;
unsigned callsBefore = 0;

void EndAtOnce(const std::string& why) {
  constexpr UINT kStatus = 99;
  Log(why);
  TerminateProcess(GetCurrentProcess(), kStatus);
}

/// Lets the program handle its messages.
void Wait() {
  callsBefore = CallsSoFar();
  SwitchToFiber(program);
}

/// Acts, looks, and lets a minute pass, up to three times; looks again.
void Play(const Step& step) {
  const std::string name = step.name;
  MarkJournal(name);
  std::uint64_t slotEnd = 0;
  bool reached = false;
  for (int attempt = 0; attempt < kTries && !reached; ++attempt) {
    step.act();
    slotEnd = attempt == 0 ? clock + kSlot * kSecond : slotEnd;
    Wait();
    See(name + " now");
    for (int tick = 0; tick < kTicks; ++tick) {
      Tick(60 / kTicks);
      Wait();
    }
    reached = step.reached();
  }
  if (!reached) {
    Log("missed\t" + name);
  }
  clock = slotEnd;
  Tick(0);
  Wait();
  See(name + " later");
}

void CALLBACK PlayAll(void*) {
  std::for_each(kScenarios.at(scenario).begin(), kScenarios.at(scenario).end(), Play);
  EndAtOnce("not ended");
}

BOOL WINAPI SupplyGetMessageW(MSG* message, HWND window, UINT first, UINT last) {
  if (player == nullptr) {
    program = ConvertThreadToFiber(nullptr);
    player = CreateFiber(0, PlayAll, nullptr);
  }
  if (CallsSoFar() - callsBefore > kBusyCalls) {
    EndAtOnce("busy");
  }
  while (PeekMessageW(message, window, first, last, PM_REMOVE) == FALSE) {
    SwitchToFiber(player);
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
  Log("box\t" + line);
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
  EndAtOnce(text);
  return EXCEPTION_CONTINUE_SEARCH;
}

const std::map<std::string, void*> kReplacements = {
    {"GetLocalTime", reinterpret_cast<void*>(&SupplyGetLocalTime)},
    {"SetTimer", reinterpret_cast<void*>(&SupplySetTimer)},
    {"KillTimer", reinterpret_cast<void*>(&SupplyKillTimer)},
    {"GetMessageW", reinterpret_cast<void*>(&SupplyGetMessageW)},
    {"TrackPopupMenu", reinterpret_cast<void*>(&SupplyTrackPopupMenu)},
    {"MessageBoxA", reinterpret_cast<void*>(&SupplyMessageBoxA)},
    {"FatalAppExitA", reinterpret_cast<void*>(&SupplyFatalAppExitA)},
    {"SetUnhandledExceptionFilter", reinterpret_cast<void*>(&SupplySetUnhandledExceptionFilter)},
};

}  // namespace

void BeginScenario() {
  std::ifstream file(BesideTheProgram(L"scenario"));
  if (file >> scenario) {
    SetUnhandledExceptionFilter(OnCrash);
    RewriteImports(kReplacements, file);
  }
}

bool InScenario() { return !scenario.empty(); }

BOOL AnswerOfTheShell(const TrayEntry& entry) {
  if (icon.has_value() == (entry.command == NIM_ADD)) {
    return FALSE;
  }
  if (entry.command == NIM_DELETE) {
    icon.reset();
  } else {
    icon = entry;
  }
  if (entry.command != NIM_MODIFY) {
    Log(icon ? "icon\tadded" : "icon\tremoved");
  }
  return TRUE;
}
