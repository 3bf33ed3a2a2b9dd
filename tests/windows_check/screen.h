#pragma once

#include <windows.h>
// Needs windows.h first.
#include <objidl.h>
// Needs objidl.h first.
#include <gdiplus.h>

#include <string>

#include "support/pixels_win.h"

/// While it lives, this thread's coordinates are real pixels, even if the system scales the program.
class PhysicalPixels {
 public:
  PhysicalPixels() noexcept
      : before_(SetAwareness(reinterpret_cast<void*>(INT_PTR{-3}))) {}  // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE
  ~PhysicalPixels() { SetAwareness(before_); }
  PhysicalPixels(const PhysicalPixels&) = delete;
  PhysicalPixels& operator=(const PhysicalPixels&) = delete;

 private:
  /// SetThreadDpiAwarenessContext, which came with Windows 10 version 1607.
  static void* SetAwareness(void* context) noexcept {
    using Function = void*(WINAPI*)(void*);
    static const auto set = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetThreadDpiAwarenessContext")));
    return set != nullptr && context != nullptr ? set(context) : nullptr;
  }

  void* before_;
};

/// Returns the client area of a window, on the screen.
[[nodiscard]] inline RECT ClientOnScreen(HWND window) {
  RECT place{};
  GetClientRect(window, &place);
  MapWindowPoints(window, HWND_DESKTOP, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

/// Saves a place of the screen and its surroundings as tidewell-NAME.png in the current folder. Use it within
/// PhysicalPixels.
inline void SavePicture(const RECT& place, int around, const std::wstring& name) {
  RECT wanted = place;
  InflateRect(&wanted, around, around);
  const Pixels pixels(nullptr, wanted);
  constexpr CLSID kPng = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);
  Gdiplus::Bitmap(pixels.bitmap(), nullptr).Save((L"tidewell-" + name + L".png").c_str(), &kPng, nullptr);
  Gdiplus::GdiplusShutdown(token);
}

/// How long the system may take to repaint.
inline constexpr DWORD kPainting = 300;  // ms

/// Moves the pointer into a corner and waits for the repaint.
inline void RestPointer() {
  SetCursorPos(2, 2);
  Sleep(kPainting);
}
