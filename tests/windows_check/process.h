#pragma once

#include <windows.h>

#include <string>

#include "runtime/handle_win.h"

namespace check {

/// A process that ends with the object, or with the check, however that ends.
class Process {
 public:
  /// Starts a command line, with a shortcut's show command.
  explicit Process(const std::wstring& commandLine, int show = SW_SHOWNORMAL);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] DWORD Id() const noexcept { return id_; }
  [[nodiscard]] HANDLE Handle() const noexcept { return process_.get(); }
  [[nodiscard]] bool Ended() const noexcept { return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }

  /// Returns its exit status. The check fails if it does not end.
  [[nodiscard]] DWORD WaitForEnd() const;

  /// Returns its first window of a class, or null.
  [[nodiscard]] HWND Window(const std::wstring& windowClass) const;

  /// Waits until such a window is shown.
  [[nodiscard]] HWND ShownWindow(const std::wstring& windowClass) const;

 private:
  runtime::unique<HANDLE, CloseHandle> process_;
  DWORD id_ = 0;
};

/// The command line that starts this file as another program: "--typewriter" or "--empty-window".
[[nodiscard]] std::wstring OwnCommand(const std::wstring& role);

/// A window to type into. The constructor gives it the keyboard.
class Typewriter {
 public:
  Typewriter();

  /// Types as the keyboard does.
  void Type(const std::wstring& letters) const;
  void WaitForText(const std::wstring& text) const;
  [[nodiscard]] bool HasTheKeyboard() const noexcept { return GetForegroundWindow() == window_; }

 private:
  Process process_;
  HWND window_;
};

}  // namespace check
