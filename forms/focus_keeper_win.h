#pragma once

#include <windows.h>

namespace forms {

/// Remembers which control of a form has the keyboard while another window is active; a form is no dialog box, so that
/// the system does not. The first time it is the first control in tab order.
class FocusKeeper {
 public:
  /// To be called for WM_ACTIVATE, instead of the default handling, which would give the focus to the form itself.
  void OnActivate(HWND form, WPARAM wParam) noexcept {
    if (LOWORD(wParam) == WA_INACTIVE) {
      Save(form, GetFocus());
    } else if (HIWORD(wParam) == 0) {  // not minimised
      PassOn(form);
    }
  }

  /// To be called for WM_SETFOCUS. A form that is minimised gets the focus from the control that had it; any other
  /// passes it on.
  void OnSetFocus(HWND form, WPARAM wParam) noexcept {
    Save(form, reinterpret_cast<HWND>(wParam));
    if (IsIconic(form) == FALSE) {
      PassOn(form);
    }
  }

  /// Hands the keyboard on to a control of the form that has it itself.
  void PassOn(HWND form) noexcept {
    const HWND first = GetNextDlgTabItem(form, nullptr, FALSE);
    SetFocus(last_ != nullptr ? last_ : first != nullptr ? first : form);
  }

 private:
  void Save(HWND form, HWND focus) noexcept { last_ = IsChild(form, focus) != FALSE ? focus : last_; }

  HWND last_ = nullptr;
};

}  // namespace forms
