#pragma once

#include <windows.h>

namespace forms {

/// Remembers that painting a form, or a frame in it, was refused, and paints it again at the next tick. At once it
/// would be refused again, in a loop that starves the timers.
class PaintRetry {
 public:
  /// Call it with the result of each call that paints or invalidates.
  void Note(bool done) noexcept { refused_ = refused_ || !done; }

  /// Call it at each tick of the form.
  void OnTick(HWND form) noexcept {
    if (refused_) {
      refused_ = RedrawWindow(form, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN) == FALSE;
    }
  }

 private:
  bool refused_ = false;
};

}  // namespace forms
