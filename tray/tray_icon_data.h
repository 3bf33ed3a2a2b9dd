#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace mMoon {

/// The record of the tray icon as the program keeps it: the system's NOTIFYICONDATA in its first, 88-byte form, with a
/// wide tip. Handles are the 32 bits that the record has for them.
struct TrayIconRecord {
  static constexpr std::size_t kTipLength = 64;

  std::uint32_t cbSize = 0;
  std::uint32_t hWnd = 0;
  std::uint32_t uID = 0;
  std::uint32_t uFlags = 0;
  std::uint32_t uCallbackMessage = 0;
  std::uint32_t hIcon = 0;
  std::array<wchar_t, kTipLength> szTip{};  ///< padded with spaces to its full length, no terminating zero

  /// Stores a tip left-aligned: a shorter text is padded with spaces, a longer one is cut.
  void SetTip(std::wstring_view text);
};

extern TrayIconRecord TrayIconData;

}  // namespace mMoon
