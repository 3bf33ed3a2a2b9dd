#pragma once

#include <windows.h>

namespace forms {

/// Remembers which control of a form has the keyboard while another window is active; a form is no dialog box, so that
/// the system does not. The first time it is the first control in tab order.
class FocusKeeper {
 public:
  /// To be called before the form is minimised: by WM_ACTIVATE the system has taken the focus already.
  void Save(HWND form) noexcept {
    const HWND focus = GetFocus();
    last_ = IsChild(form, focus) != FALSE ? focus : last_;
  }

  /// To be called for WM_ACTIVATE, instead of the default handling, which would give the focus to the form itself.
  void OnActivate(HWND form, WPARAM wParam) noexcept {
    if (LOWORD(wParam) == WA_INACTIVE) {
      Save(form);
    } else if (HIWORD(wParam) == 0) {  // not minimised
      const HWND first = GetNextDlgTabItem(form, nullptr, FALSE);
      SetFocus(last_ != nullptr ? last_ : first != nullptr ? first : form);
    }
  }

 private:
  HWND last_ = nullptr;
};

}  // namespace forms
