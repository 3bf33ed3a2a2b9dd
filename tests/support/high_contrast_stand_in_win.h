#pragma once

#include <windows.h>

#include <array>

#include "support/system_stand_in_win.h"

extern "C" decltype(&SystemParametersInfoW) systemParametersInfoSlot asm("__imp__SystemParametersInfoW@16");

/// While it lives, the system has these window and text colours, and high contrast (which Wine lacks) on or off.
class HighContrastStandIn {
 public:
  HighContrastStandIn(bool contrast, COLORREF face, COLORREF text) {
    on = contrast;
    SetSysColors(kElements.size(), kElements.data(), std::array{face, text}.data());
  }
  ~HighContrastStandIn() { SetSysColors(kElements.size(), kElements.data(), before_.data()); }
  HighContrastStandIn(const HighContrastStandIn&) = delete;
  HighContrastStandIn& operator=(const HighContrastStandIn&) = delete;

  static inline bool on = false;

 private:
  static BOOL WINAPI Tell(UINT action, UINT size, void* data, UINT change) {
    if (action != SPI_GETHIGHCONTRAST) {
      return systems_(action, size, data, change);
    }
    auto* const contrast = static_cast<HIGHCONTRASTW*>(data);
    if (contrast->cbSize != sizeof *contrast || size != sizeof *contrast) {
      return FALSE;
    }
    contrast->dwFlags = HCF_AVAILABLE | (on ? HCF_HIGHCONTRASTON : 0);
    return TRUE;
  }

  static constexpr std::array<INT, 2> kElements = {COLOR_3DFACE, COLOR_WINDOWTEXT};
  static inline const auto systems_ = systemParametersInfoSlot;
  SystemStandIn<decltype(&SystemParametersInfoW)> standIn_{systemParametersInfoSlot, &Tell};
  std::array<COLORREF, 2> before_ = {GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_WINDOWTEXT)};
};
