#pragma once

#include <windows.h>

#include <string>

#include "windows_check/process.h"
#include "windows_check/stage.h"

namespace check {

/// A running Tidewell. It ends with the object, and its icon, too.
class Program {
 public:
  /// Starts it, by default without a settings file, and waits for its windows.
  explicit Program(const Stage& stage, int show = SW_SHOWNORMAL);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] const Process& TheProcess() const noexcept { return process_; }
  [[nodiscard]] HWND Main() const noexcept { return main_; }
  [[nodiscard]] HWND About() const noexcept { return about_; }  ///< which owns the icon
  [[nodiscard]] bool Visible() const noexcept { return IsWindowVisible(main_) != FALSE; }

  /// One of the options of the main window.
  [[nodiscard]] HWND Option(int index) const noexcept;

  /// The menu that is open; null if none is.
  [[nodiscard]] HWND Menu() const;

  /// Has the report brought up to date, as after a change of the clock, and waits for it.
  void Update() const;

  /// Waits until the main window is shown, or hidden.
  void WaitUntilShown(bool shown) const;

 private:
  static std::wstring Command(const Stage& stage);

  Process process_;
  HWND main_;
  HWND about_;
};

/// A real click at a place in a window, where no other one covers it: the user's programs are not clicked on.
void ClickWithin(HWND window, POINT at);

/// A real click in the middle of a control, or at its left, where a check box has its box.
void ClickOn(HWND control, bool atItsLeft = false);

/// What the report calls a window: its class. Texts are the user's.
[[nodiscard]] std::wstring NameOf(HWND window);

}  // namespace check
