#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "runtime/code_page.h"

namespace tidewell {

/// The record of the tray icon as the program keeps it: the system's NOTIFYICONDATA in its first, 88-byte form, but
/// with a wide tip. Handles have 32 bits there.
struct ShellRecord {
  static constexpr std::size_t kTipLength = 64;

  std::uint32_t cbSize = 0;
  std::uint32_t hWnd = 0;
  std::uint32_t uID = 0;
  std::uint32_t uFlags = 0;
  std::uint32_t uCallbackMessage = 0;
  std::uint32_t hIcon = 0;
  std::array<wchar_t, kTipLength> szTip{};  ///< made by the report; padded with spaces to its full length, no zero

  /// Stores a tip: a shorter text is padded with spaces, a longer one is cut.
  void SetTip(std::wstring_view text);

  bool operator==(const ShellRecord&) const = default;
};

/// The record's 8-bit form for the shell: six little-endian 32-bit numbers, and the tip in the system code page.
inline constexpr std::size_t kShellRecordSize = 88;
using ShellBytes = std::array<std::byte, kShellRecordSize>;

/// Convert to those bytes and back. A character that the code page does not have becomes '?'.
[[nodiscard]] ShellBytes Pack(const ShellRecord& record, const runtime::CodePage& codePage);
[[nodiscard]] ShellRecord Unpack(const ShellBytes& bytes, const runtime::CodePage& codePage);

}  // namespace tidewell

namespace mMoon {

/// The record of the tray icon. The report writes its tip, UpdateMoonIcon the rest.
inline tidewell::ShellRecord TrayIconData;

}  // namespace mMoon
