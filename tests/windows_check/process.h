#pragma once

#include <windows.h>

#include <string>

#include "runtime/handle_win.h"

namespace check {

/// A process of the check's own: it ends with the object, and whatever happens with the check.
class Process {
 public:
  /// Starts a command line. The show command is that of a shortcut, such as SW_SHOWNORMAL.
  explicit Process(const std::wstring& commandLine, int show = SW_SHOWNORMAL);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] DWORD Id() const noexcept { return id_; }
  [[nodiscard]] HANDLE Handle() const noexcept { return process_.get(); }
  [[nodiscard]] bool Ended() const noexcept { return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }

  /// Returns its exit status. The check fails if it does not end by itself.
  [[nodiscard]] DWORD WaitForEnd() const;

  /// Returns its first window of a class; null if there is none.
  [[nodiscard]] HWND Window(const std::wstring& windowClass) const;

  /// Waits until such a window is shown.
  [[nodiscard]] HWND ShownWindow(const std::wstring& windowClass) const;

 private:
  runtime::unique<HANDLE, CloseHandle> process_;
  DWORD id_ = 0;
};

/// The command line that starts the check again as another program: "--typewriter" or "--empty-window".
[[nodiscard]] std::wstring OwnCommand(const std::wstring& role);

/// A window of the check's own that the user types into, and that takes the keyboard.
class Typewriter {
 public:
  Typewriter();

  /// Types with the real keyboard.
  void Type(const std::wstring& letters) const;
  /// Waits until a text stands there.
  void WaitForText(const std::wstring& text) const;
  [[nodiscard]] bool HasTheKeyboard() const noexcept { return GetForegroundWindow() == window_; }

 private:
  Process process_;
  HWND window_;
};

}  // namespace check
