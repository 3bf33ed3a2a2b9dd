#pragma once

#include <windows.h>

namespace forms {

/// Remembers that a painting of a form, or of a frame in it, was refused, and has all of it painted again. That waits
/// for the next tick: what is refused now would be refused again at once, in a loop that starves the timers.
class PaintKeeper {
 public:
  /// To be called with the result of each call that paints, or asks for a painting.
  void Note(bool done) noexcept { refused_ = refused_ || !done; }

  /// To be called at each tick of the form.
  void OnTick(HWND form) noexcept {
    if (refused_) {
      refused_ = RedrawWindow(form, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN) == FALSE;
    }
  }

 private:
  bool refused_ = false;
};

}  // namespace forms
