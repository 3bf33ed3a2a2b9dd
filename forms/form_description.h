#pragma once

#include <cstdint>

#include "forms/twips.h"

namespace forms {

/// A place and a size in twips, relative to what the control lies in.
struct TwipsPlace {
  int left, top, width, height;
};

/// What a control is. A frame is a window of its own class, the others are the system's.
enum class ControlKind : std::uint8_t { Label, Button, CheckBox, Frame, PictureBox };

/// A font by the name of its face and its size in points, 1/72 inch.
struct FontDescription {
  const wchar_t* face;
  double points;
  bool bold;
  const wchar_t* scalable = nullptr;  ///< an outline face for other than 96 dpi, if `face` is a bitmap font
};

/// The font of controls that name none. The larger font of message boxes would cut off the longest check box.
inline constexpr FontDescription kDefaultFont = {.face = L"MS Shell Dlg 2", .points = 8.25, .bold = false};

/// One control of a form as it is designed. The id is the control's identity in WM_COMMAND.
struct ControlDescription {
  ControlKind kind;
  int id;
  const wchar_t* caption;
  TwipsPlace place;
  FontDescription font = kDefaultFont;
  bool centred = false;  ///< the text of a label
  bool enabled = true;
  bool visible = true;
};

}  // namespace forms
