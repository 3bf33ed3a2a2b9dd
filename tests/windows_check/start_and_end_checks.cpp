// The start and the end.

#include <algorithm>
#include <cmath>
#include <sstream>

#include "report/frmMoon.h"
#include "windows_check/program.h"

namespace check {

namespace {

/// The release tests compare the program's imports with this list. A line is a library and its functions.
TEST(Start, NeedsNoImportThatThisWindowsLacks) {
  const HRSRC list = FindResourceW(nullptr, L"IMPORTS", RT_RCDATA);
  const auto* const text = static_cast<const char*>(LockResource(LoadResource(nullptr, list)));
  std::istringstream lines(std::string(text, SizeofResource(nullptr, list)));
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string library, function;
    for (words >> library; words >> function; ++count) {
      EXPECT_NE(GetProcAddress(LoadLibraryA(library.c_str()), function.c_str()), nullptr) << library << " " << function;
    }
  }
  EXPECT_GT(count, 50);
}

/// Milliseconds from the start of a process to its window.
double StartTime(const std::wstring& command, const std::wstring& windowClass) {
  LARGE_INTEGER frequency, start, end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  const Process process(command);
  const HWND window = process.ShownWindow(windowClass);
  QueryPerformanceCounter(&end);
  support::Ask(window, WM_ENDSESSION, TRUE);  // so that the program removes its icon
  return 1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// The shortest of several times: other work of the machine only makes them longer.
TEST(Start, TakesSomeTime) {
  double program = kPatience;
  double empty = kPatience;
  for (int turn = 0; turn < 3; ++turn) {
    empty = std::min(empty, StartTime(OwnCommand(L"--empty-window"), L"EmptyWindow"));
    program = std::min(program, StartTime(Command(), tidewell::frmMoon::kWindowClass));
  }
  Note(std::to_wstring(std::lround(program)) + L" ms to the window, an empty one " +
       std::to_wstring(std::lround(empty)) + L" ms");
}

TEST(Start, OfASecondCopyEndsIt) {
  const Program program;
  EXPECT_EQ(Process(Command()).ExitStatus(), 0U);
  EXPECT_FALSE(program.Ended());
  EXPECT_TRUE(program.Visible());
}

TEST(Start, MinimisedGoesIntoTheTray) {
  const Program program(SW_SHOWMINNOACTIVE);
  EXPECT_FALSE(program.Visible());
  EXPECT_TRUE(program.IconStands());
  EXPECT_NE(GetForegroundWindow(), program.Main());
  EXPECT_NE(GetForegroundWindow(), program.About());
  program.SendIconMessage(WM_LBUTTONUP);
  program.WaitUntilShown(true);
  EXPECT_FALSE(IsIconic(program.Main()));
}

// ---- the ways to end: each leaves neither a process nor an icon

/// Ends the program by an action and checks what is left.
template <class Action>
void EndBy(const Program& program, const Action& action) {
  const auto place = program.FindIcon();
  action();
  EXPECT_EQ(program.TheProcess().ExitStatus(), 0U);
  EXPECT_FALSE(program.IconStands() || (place && ShowsTheIcon(*place)));
  EXPECT_TRUE(support::ProcessesOf(L"Tidewell.exe").empty());
}

TEST(End, ByClose) {
  const Program program;
  EndBy(program, [&] { ClickOn(program.CloseButton()); });
}

TEST(End, ByACloseMessage) {
  const Program program;
  EndBy(program, [&] { PostMessageW(program.Main(), WM_CLOSE, 0, 0); });
}

TEST(End, ByExitInTheMenu) {
  const Program program;
  EndBy(program, [&] { ClickEntry(program.OpenMenu(), 2); });
}

TEST(End, WithTheSession) {
  const Program program;
  EXPECT_EQ(support::Ask(program.Main(), WM_QUERYENDSESSION), TRUE);
  support::Ask(program.Main(), WM_ENDSESSION, FALSE);
  EXPECT_FALSE(program.Ended()) << "the session continues";
  EndBy(program, [&] { support::Ask(program.Main(), WM_ENDSESSION, TRUE); });
}

}  // namespace

}  // namespace check
