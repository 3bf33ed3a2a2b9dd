// Runs the program through a scenario, from start to end, in a second. The stand-in supplies its clock, timers, shell,
// menu and boxes. Whenever the program waits for a message, the next step is done.
#pragma once

#include <windows.h>

constexpr int kIconSize = 16;

/// The program's record: the first form of NOTIFYICONDATAA.
struct Record {
  DWORD size;
  HWND window;
  UINT id, flags, message;
  HICON icon;
  char tip[64];
};

/// A call of Shell_NotifyIconA, as "tray-calls" has it.
struct TrayEntry {
  DWORD command;
  BOOL result;
  Record record;
  DWORD pixels[kIconSize * kIconSize];
};

/// Begins the scenario that is named in the file "scenario" beside the program, if there is one. The rest of the file
/// says which calls fail; see faults.h.
void BeginScenario();
bool InScenario();

/// What the shell of the scenario answers.
BOOL AnswerOfTheShell(const TrayEntry& entry);
