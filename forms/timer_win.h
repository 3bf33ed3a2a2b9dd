#pragma once

#include <windows.h>

#include "runtime/runtime_error.h"

namespace forms {

/// A timer of a window: WM_TIMER with its id at each interval, as long as the object lives.
class Timer {
 public:
  /// Error: 7 Out of memory.
  Timer(HWND window, UINT_PTR id, UINT milliseconds) : window_(window), id_(id) {
    runtime::RequireMade(SetTimer(window_, id_, milliseconds, nullptr) != 0);
  }
  ~Timer() { KillTimer(window_, id_); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

 private:
  HWND window_;
  UINT_PTR id_;
};

}  // namespace forms
