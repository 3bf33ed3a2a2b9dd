#pragma once

#include <windows.h>

namespace forms {

/// Remembers, while another window is active, which control of a form had the keyboard: at first, the first in tab
/// order. The system does so for dialog boxes only.
class FocusKeeper {
 public:
  /// Call it for WM_ACTIVATE instead of the default handling, which gives the focus to the form itself.
  void OnActivate(HWND form, WPARAM wParam) noexcept {
    if (LOWORD(wParam) == WA_INACTIVE) {
      Save(form, GetFocus());
    } else if (HIWORD(wParam) == 0) {  // not minimised
      PassOn(form);
    }
  }

  /// Call it for WM_SETFOCUS. A minimised form takes the focus from its control; any other passes it on.
  void OnSetFocus(HWND form, WPARAM wParam) noexcept {
    Save(form, reinterpret_cast<HWND>(wParam));
    if (IsIconic(form) == FALSE) {
      PassOn(form);
    }
  }

  /// Gives the form's keyboard to one of its controls.
  void PassOn(HWND form) noexcept {
    const HWND first = GetNextDlgTabItem(form, nullptr, FALSE);
    SetFocus(last_ != nullptr ? last_ : first != nullptr ? first : form);
  }

 private:
  void Save(HWND form, HWND focus) noexcept { last_ = IsChild(form, focus) != FALSE ? focus : last_; }

  HWND last_ = nullptr;
};

}  // namespace forms
