#pragma once

#include <windows.h>

#include <string>

#include "forms/controls_win.h"
#include "forms/form_description.h"
#include "runtime/handle_win.h"

namespace forms {

/// A label whose text is never cut off at its sides. A text that is too wide is written in the largest size that fits.
class FittedLabel {
 public:
  /// Creates the label as described; its text may be `room` pixels wide. Error: 7 Out of memory.
  FittedLabel(const ControlDescription& description, HWND parent, int room)
      : label_(description, parent), room_(room) {}

  /// Writes the caption. If it cannot be measured, or a smaller font cannot be made, the next call tries again.
  /// Error: 7 Out of memory.
  void SetCaption(const std::wstring& caption);

 private:
  Control label_;
  runtime::unique_font smaller_;  ///< none while the text fits in the font of the label
  int room_;
  bool fitted_ = false;
};

}  // namespace forms
