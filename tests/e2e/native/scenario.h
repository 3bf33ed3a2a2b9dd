// A whole life of the program within a second: the stand-in supplies its clock, timers, shell, menu and boxes, and does
// a step of the scenario whenever the program waits for a message.
#pragma once

#include <windows.h>

#include <cstddef>

constexpr int kIconSize = 16;
constexpr std::size_t kRecordSize = 88;

/// A call of Shell_NotifyIconA, as it is written down.
struct TrayEntry {
  DWORD command;
  DWORD result;
  unsigned char record[kRecordSize];
  DWORD pixels[kIconSize * kIconSize];
};

/// Takes the scenario that the file "scenario" beside the program names, if there is one. The rest of the file says
/// which calls fail; see faults.h.
void BeginScenario();
bool InScenario();

/// What the shell of the scenario answers.
BOOL AnswerOfTheShell(const TrayEntry& entry);
