#pragma once

#include <windows.h>

#include "runtime/handle_win.h"
#include "version.h"

namespace tidewell {

/// Tells whether another copy of the program runs in the user's session. Of two copies that start at once, one creates
/// the mutex and the other finds it.
class PreviousInstanceTest {
 public:
  /// Makes the test; this copy counts as running as long as the object lives.
  PreviousInstanceTest() noexcept : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\" TIDEWELL_NAME " is running")) {
    const DWORD reason = GetLastError();
    // An elevated copy's mutex denies access, but that copy is running too.
    anotherIsRunning_ = reason == ERROR_ALREADY_EXISTS || (!mutex_ && reason == ERROR_ACCESS_DENIED);
  }

  /// Whether one ran already when the test was made.
  [[nodiscard]] bool AnotherIsRunning() const noexcept { return anotherIsRunning_; }

 private:
  runtime::unique_mutex mutex_;
  bool anotherIsRunning_ = false;
};

}  // namespace tidewell
