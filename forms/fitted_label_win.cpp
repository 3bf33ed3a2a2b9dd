#include "forms/fitted_label_win.h"

#include <utility>

#include "forms/device_context_win.h"

namespace forms {

namespace {

/// The width of a text in pixels; 0 if the system refuses to measure it.
LONG WidthOf(const std::wstring& text, HFONT font) noexcept {
  const ScreenScope screen;
  const HGDIOBJ before = SelectObject(screen.dc(), font);
  if (before == nullptr) {
    return 0;
  }
  SIZE size{};
  GetTextExtentPoint32W(screen.dc(), text.data(), static_cast<int>(text.size()), &size);
  SelectObject(screen.dc(), before);
  return size.cx;
}

}  // namespace

void FittedLabel::SetCaption(const std::wstring& caption) {
  if (fitted_ && caption == label_.Caption()) {
    return;
  }
  LOGFONTW logical{};
  GetObjectW(label_.font(), sizeof logical, &logical);
  runtime::unique_font smaller;
  LONG width = WidthOf(caption, label_.font());
  while (width > room_ && ++logical.lfHeight < 0) {  // lfHeight is negative: ++ shrinks it
    smaller.reset(CreateFontIndirectW(&logical));
    width = WidthOf(caption, smaller.get());
  }
  fitted_ = width > 0 && width <= room_;
  if (smaller || smaller_) {
    const HFONT font = smaller ? smaller.get() : label_.font();
    SendMessageW(label_.hwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    smaller_ = std::move(smaller);
  }
  label_.SetCaption(caption);
}

}  // namespace forms
