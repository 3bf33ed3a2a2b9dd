// The ways to end: each leaves neither a process nor an icon.

#include <functional>

#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/tray.h"

namespace check {

namespace {

/// Ends the program by an action and checks what is left.
Outcome EndBy(const Program& program, const std::function<void()>& action) {
  const auto place = PlaceOfIconIfKnown(program.About());
  action();
  Facts facts;
  facts.Want(L"exit status", 0, program.TheProcess().WaitForEnd());
  facts.Want(L"the icon stands", 0, IconStands(program.About()) || (place && ShowsTheIcon(*place)));
  facts.Want(L"processes", 0, static_cast<long long>(support::ProcessesOf(L"Tidewell.exe").size()));
  return facts.Result();
}

Outcome Close(const Program& program) {
  return EndBy(program, [&] { ClickOn(program.CloseButton()); });
}

Outcome CloseMessage(const Program& program) {
  return EndBy(program, [&] { PostMessageW(program.Main(), WM_CLOSE, 0, 0); });
}

Outcome Exit(const Program& program) {
  return EndBy(program, [&] { ClickEntry(OpenMenu(program), 2); });
}

Outcome EndOfTheSession(const Program& program) {
  Facts facts;
  facts.Want(L"answer to WM_QUERYENDSESSION", TRUE, support::Ask(program.Main(), WM_QUERYENDSESSION).value_or(-1));
  support::Ask(program.Main(), WM_ENDSESSION, FALSE);
  facts.Want(L"ended although the session continues", 0, program.TheProcess().Ended());
  const Outcome ended = EndBy(program, [&] { support::Ask(program.Main(), WM_ENDSESSION, TRUE); });
  return ended.kind == Outcome::Kind::Ok ? facts.Result() : ended;
}

}  // namespace

std::vector<Check> EndingChecks() {
  return {
      {L"Close", Close},
      {L"close command", CloseMessage},
      {L"Exit in the menu", Exit},
      {L"WM_QUERYENDSESSION and WM_ENDSESSION", EndOfTheSession},
  };
}

}  // namespace check
