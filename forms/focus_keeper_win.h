#pragma once

#include <windows.h>

namespace forms {

/// Remembers which control of a form has the keyboard while another window is active; a form is no dialog box, so that
/// the system does not. The first time it is the first control in tab order.
class FocusKeeper {
 public:
  /// To be called for every message of the form, before it is handled. Asking at each is what it takes: a form that is
  /// minimised, by itself or by the shell that shows the desktop, hears of it when the focus is gone already.
  void OnMessage(HWND form, UINT message) noexcept {
    const HWND focus = GetFocus();
    if (IsChild(form, focus) != FALSE) {
      last_ = focus;
    } else if (message == WM_SETFOCUS) {
      PassOn(form);
    }
  }

  /// To be called for WM_ACTIVATE, instead of the default handling, which would give the focus to the form itself.
  void OnActivate(HWND form, WPARAM wParam) noexcept {
    if (LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0) {  // not minimised
      PassOn(form);
    }
  }

  /// Hands the keyboard on to a control of the form that has it itself.
  void PassOn(HWND form) noexcept {
    const HWND first = GetNextDlgTabItem(form, nullptr, FALSE);
    SetFocus(last_ != nullptr ? last_ : first != nullptr ? first : form);
  }

 private:
  HWND last_ = nullptr;
};

}  // namespace forms
