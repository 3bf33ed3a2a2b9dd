#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "runtime/handle_win.h"
#include "support/other_windows_win.h"

inline constexpr DWORD kPatience = 20000;  ///< ms; only a failing check waits that long

/// Calls the condition until it is true; returns that result. After kPatience the check fails with `what`, which the
/// condition may change.
template <class Condition>
auto Until(const std::wstring& what, Condition condition) {
  const DWORD start = GetTickCount();
  while (true) {
    if (auto found = condition()) {
      return found;
    }
    if (GetTickCount() - start > kPatience) {
      throw std::runtime_error("not within 20 s: " + support::Utf8(what));
    }
    Sleep(10);
  }
}

/// Ends the check: it is not possible on this machine.
[[noreturn]] inline void NotHere(const std::wstring& why) {
  [&] { GTEST_SKIP() << why; }();
  throw testing::AssertionException({testing::TestPartResult::kSkip, __FILE__, __LINE__, ""});
}

/// Notes what a check has seen.
inline void Note(const std::wstring& seen) { testing::Test::RecordProperty("seen", support::Utf8(seen)); }

/// A temporary folder with a copy of the program.
inline std::filesystem::path folder;

[[nodiscard]] inline std::filesystem::path CopyOfProgram() { return folder / L"Tidewell.exe"; }
[[nodiscard]] inline std::filesystem::path SettingsFile() { return folder / L"vesk.dat"; }

/// The command lines of the program, and of this file as another program: "--typewriter" or "--empty-window".
[[nodiscard]] std::wstring Command();
[[nodiscard]] std::wstring OwnCommand(const std::wstring& role);

/// A process. The destructor ends it; if windows_check itself ends first, the system does.
class Process {
 public:
  /// Starts a command line, with a shortcut's show command.
  explicit Process(const std::wstring& commandLine, int show = SW_SHOWNORMAL);
  ~Process();

  [[nodiscard]] DWORD Id() const noexcept { return id_; }
  [[nodiscard]] HANDLE Handle() const noexcept { return process_.get(); }
  [[nodiscard]] bool Ended(DWORD within = 0) const noexcept {
    return WaitForSingleObject(process_.get(), within) == WAIT_OBJECT_0;
  }

  /// Waits for its end; returns its exit status, or STILL_ACTIVE if it does not end.
  [[nodiscard]] DWORD ExitStatus() const;

  /// Returns its first window of a class, or null.
  [[nodiscard]] HWND Window(const std::wstring& windowClass) const;

  /// Waits until such a window is shown.
  [[nodiscard]] HWND ShownWindow(const std::wstring& windowClass) const;

 private:
  runtime::unique<HANDLE, CloseHandle> process_;
  DWORD id_ = 0;
};

/// A running Tidewell. It ends with the object, and so does its icon.
class Program : public Process {
 public:
  /// Starts it without a settings file and waits for its windows.
  explicit Program(int show = SW_SHOWNORMAL);
  ~Program();

  [[nodiscard]] HWND Main() const noexcept { return main_; }
  [[nodiscard]] HWND About() const noexcept { return about_; }  ///< owns the icon
  [[nodiscard]] bool Visible() const noexcept { return IsWindowVisible(main_) != FALSE; }
  [[nodiscard]] HWND Option(int index) const noexcept;  ///< counted from 0
  [[nodiscard]] HWND CloseButton() const noexcept;

  /// Updates the report, as after a change of the clock, and waits for it.
  void Update() const;

  /// Waits until the main window is shown or hidden.
  void WaitUntilShown(bool shown) const;

  /// Whether its icon is in the tray.
  [[nodiscard]] bool IconStands() const;

  /// Removes its icon; returns whether the shell did.
  bool RemoveIcon() const;

  /// Returns where the icon is on the screen, in the pixels of PhysicalPixels; nothing if the system does not tell, or
  /// hides the icon.
  [[nodiscard]] std::optional<RECT> FindIcon() const;

  /// The same, but ends the check if there is no such place.
  [[nodiscard]] RECT PlaceOfIcon() const;

  /// A real click in the middle of the icon; see PlaceOfIcon.
  void ClickIcon(bool right = false) const;

  /// Sends the icon's message as the shell does, for an icon that cannot be clicked.
  void SendIconMessage(UINT message) const;

  /// The open menu, or null.
  [[nodiscard]] HWND Menu() const;

  /// Opens the menu, by a real click on the icon if possible, and returns it.
  [[nodiscard]] HWND OpenMenu() const;

  /// Opens the About box from the menu.
  void ShowAbout() const;

 private:
  HWND main_;
  HWND about_;
};

/// A real click in the middle of a control, or at its left end, for the box of a check box. Ends the check if another
/// window covers the place: never click the user's programs.
void ClickOn(HWND control, bool atItsLeft = false);

/// The same on an entry of the open menu, counted from 0.
void ClickEntry(HWND menu, int entry);

/// Whether the icon of a program, even an ended one, is at a place. A screen reader gets its tip as its name.
[[nodiscard]] bool ShowsTheIcon(const RECT& place);

/// A window's name in the report: its class. A text could be private.
[[nodiscard]] std::wstring NameOf(HWND window);

/// The middle of a place on the screen.
[[nodiscard]] constexpr POINT MiddleOf(const RECT& place) noexcept {
  return {.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2};
}
