#pragma once

#include <windows.h>

namespace forms {

/// Remembers which control of a form has the keyboard while another window is active; a form is no dialog box, so that
/// the system does not. The first time it is the first control in tab order.
class FocusKeeper {
 public:
  /// To be called for every message of the form, before it is handled.
  void OnMessage(HWND form, UINT message, WPARAM wParam) noexcept {
    if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE) {
      Save(form, GetFocus());
    } else if (message == WM_SETFOCUS) {  // activated, or minimised: then in the place of the control that had it
      Save(form, reinterpret_cast<HWND>(wParam));
      if (IsIconic(form) == FALSE) {
        PassOn(form);
      }
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
