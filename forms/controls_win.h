#pragma once

#include <windows.h>

#include <string>

#include "forms/form_description.h"
#include "forms/paint_retry_win.h"
#include "forms/window_win.h"
#include "runtime/handle_win.h"

namespace forms {

/// Reads the screen's twips per pixel. Error: 7 Out of memory.
[[nodiscard]] TwipsPerPixel ReadTwipsPerPixel();

/// Makes a font for the screen's resolution. Points are 20 twips. Error: 7 Out of memory.
[[nodiscard]] runtime::unique_font MakeFont(const FontDescription& font);

/// Loads an icon of a size in pixels from the program's resources; null when there is none.
[[nodiscard]] runtime::unique_icon LoadIconResource(int id, int width, int height);

/// A place in pixels.
[[nodiscard]] RECT ToPixels(const TwipsPlace& place, const TwipsPerPixel& scale);

/// A control of a form or of a frame in it, with its font. Its window belongs to the parent and ends with it.
class Control {
 public:
  /// Creates the control as described; frames have a class of their own. Error: 7 Out of memory.
  Control(const ControlDescription& description, HWND parent);

  /// The control's window, valid as long as its parent.
  [[nodiscard]] HWND hwnd() const noexcept { return hwnd_; }

  /// The font that it was made with.
  [[nodiscard]] HFONT font() const noexcept { return font_.get(); }

  /// The caption as it stands on the window.
  [[nodiscard]] std::wstring Caption() const;

  /// Writes the caption. A text that already stands is not written again, or it would flicker. Error: 7 Out of memory.
  void SetCaption(const std::wstring& caption);

  /// The state of a check box: 0 or 1. Setting it from the program does not notify the form.
  [[nodiscard]] int State() const noexcept;
  void SetState(int state) noexcept;

  /// The icon that a picture box shows; not owned.
  void SetPicture(HICON picture) noexcept;

 private:
  runtime::unique_font font_;  ///< none for a picture box, which shows no text
  HWND hwnd_;
};

/// A frame without a caption: an etched border around check boxes. The boxes are its children, so it clips them. It
/// passes their commands on to the form.
class Frame : public Window<Frame> {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellFrame";

  /// Creates the frame as described; the retry is the form's. Error: 7 Out of memory.
  Frame(const ControlDescription& description, HWND form, PaintRetry& retry);

 private:
  friend Window<Frame>;
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void Paint() noexcept;

  PaintRetry& retry_;
};

}  // namespace forms
