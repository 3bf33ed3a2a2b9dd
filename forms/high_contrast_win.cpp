#include "forms/high_contrast_win.h"

#include <windows.h>

namespace forms {

namespace {

/// True if black on this colour has a contrast below 3:1.
bool Dark(COLORREF colour) noexcept {
  constexpr int kDarkGrey = 0x59;
  return 299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour) < 1000 * kDarkGrey;
}

}  // namespace

bool DarkHighContrast() noexcept {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 && Dark(GetSysColor(COLOR_3DFACE));
}

}  // namespace forms
