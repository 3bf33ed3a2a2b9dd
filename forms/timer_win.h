#pragma once

#include <windows.h>

namespace forms {

/// A timer of a window: WM_TIMER with its id at each interval, as long as the object lives.
class Timer {
 public:
  Timer(HWND window, UINT_PTR id, UINT milliseconds) noexcept : window_(window), id_(id) {
    SetTimer(window_, id_, milliseconds, nullptr);
  }
  ~Timer() { KillTimer(window_, id_); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

 private:
  HWND window_;
  UINT_PTR id_;
};

}  // namespace forms
