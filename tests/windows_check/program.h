#pragma once

#include <windows.h>

#include <string>

#include "windows_check/process.h"
#include "windows_check/stage.h"

namespace check {

/// A running Tidewell. It ends with the object, and so does its icon.
class Program {
 public:
  /// Starts it without a settings file and waits for its windows.
  explicit Program(const Stage& stage, int show = SW_SHOWNORMAL);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] const Process& TheProcess() const noexcept { return process_; }
  [[nodiscard]] HWND Main() const noexcept { return main_; }
  [[nodiscard]] HWND About() const noexcept { return about_; }  ///< owns the icon
  [[nodiscard]] bool Visible() const noexcept { return IsWindowVisible(main_) != FALSE; }

  /// An option of the main window, counted from 0.
  [[nodiscard]] HWND Option(int index) const noexcept;

  /// The open menu, or null.
  [[nodiscard]] HWND Menu() const;

  /// Updates the report, as after a change of the clock, and waits for it.
  void Update() const;

  /// Waits until the main window is shown or hidden.
  void WaitUntilShown(bool shown) const;

 private:
  static std::wstring Command(const Stage& stage);

  Process process_;
  HWND main_;
  HWND about_;
};

/// A real click in a window. Throws NotHere if another window covers the place: never click the user's programs.
void ClickWithin(HWND window, POINT at);

/// A real click in the middle of a control, or at its left end, for the box of a check box.
void ClickOn(HWND control, bool atItsLeft = false);

/// A window's name in the report: its class. A text could be private.
[[nodiscard]] std::wstring NameOf(HWND window);

}  // namespace check
