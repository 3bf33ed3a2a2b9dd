// The icon in the tray: its place, clicks, the keyboard, and a shell that restarts.

#include "support/other_windows_win.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"
#include "windows_check/waiting.h"

namespace check {

namespace {

Outcome IconInTheTray(const Stage& stage) {
  const Program program(stage);
  if (!IconStands(program.About())) {
    return Failed(L"the icon", L"none");
  }
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon(program.About());
  RestPointer();
  SavePicture(place, 200, L"tray");
  return Ok(L"at (" + std::to_wstring(place.left) + L", " + std::to_wstring(place.top) + L"), " +
            std::to_wstring(place.right - place.left) + L" x " + std::to_wstring(place.bottom - place.top));
}

Outcome LeftClicks(const Stage& stage) {
  const Program program(stage);
  ClickIcon(program);
  program.WaitUntilShown(false);
  Sleep(GetDoubleClickTime());  // two clicks, no double click
  ClickIcon(program);
  program.WaitUntilShown(true);
  Until(L"the shown window in the foreground", [&] { return GetForegroundWindow() == program.Main(); });
  return Ok();
}

/// Neither the pointer over the icon nor an update takes the keyboard from another program.
Outcome Keyboard(const Stage& stage) {
  const Program program(stage);
  const Typewriter typewriter;
  typewriter.Type(L"abc");
  typewriter.WaitForText(L"abc");
  {
    const PhysicalPixels physical;
    const RECT place = PlaceOfIcon(program.About());
    for (LONG x = place.left; x < place.right; x += 4) {
      support::Point({.x = x, .y = (place.top + place.bottom) / 2});
      Sleep(20);
    }
  }
  typewriter.Type(L"def");
  typewriter.WaitForText(L"abcdef");
  program.Update();
  typewriter.Type(L"ghi");
  typewriter.WaitForText(L"abcdefghi");
  return typewriter.HasTheKeyboard() ? Ok()
                                     : Failed(L"the keyboard at the other program", NameOf(GetForegroundWindow()));
}

/// As after a crash of the shell. Only Tidewell gets the message: other programs keep their icons.
Outcome NewShell(const Stage& stage) {
  const Program program(stage);
  if (!RemoveIcon(program.About())) {
    return NotHere(L"the shell lets no other program remove the icon");
  }
  if (IconStands(program.About())) {
    return Failed(L"no icon after its removal", L"an icon");
  }
  support::Ask(program.About(), RegisterWindowMessageW(L"TaskbarCreated"));
  return IconStands(program.About()) ? Ok() : Failed(L"the icon again", L"none");  // at once, not after a minute
}

}  // namespace

std::vector<Check> TrayChecks() {
  return {
      {L"icon in the tray", IconInTheTray},
      {L"left clicks on the icon", LeftClicks},
      {L"keyboard of another program", Keyboard},
      {L"TaskbarCreated", NewShell},
  };
}

}  // namespace check
