#pragma once

#include <windows.h>

#include <string>

#include "forms/controls_win.h"
#include "forms/form_description.h"
#include "runtime/handle_win.h"

namespace forms {

/// A label whose text is never cut off at its sides: one that is too wide for its room is written in the largest size
/// of the label's font in which it is not.
class FittedLabel {
 public:
  /// Creates the label as described, for texts of at most so many pixels. Error: 7 Out of memory.
  FittedLabel(const ControlDescription& description, HWND parent, int room)
      : label_(description, parent), room_(room) {}

  /// Writes the caption. If the system refuses to measure it or to make a smaller font, it is fitted with the next
  /// call. Error: 7 Out of memory.
  void SetCaption(const std::wstring& caption);

 private:
  Control label_;
  runtime::unique_font smaller_;  ///< none while the text fits in the font of the label
  int room_;
  bool fitted_ = false;
};

}  // namespace forms
