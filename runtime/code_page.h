#pragma once

#include <array>
#include <cstddef>

namespace runtime {

/// A system code page as a table: one wide character for each byte, no two the same, so that every byte survives the
/// round trip. Lead bytes and unassigned bytes get a character of the private use area.
struct CodePage {
  std::array<wchar_t, 256> characters;

  /// The character of a byte.
  [[nodiscard]] wchar_t Decode(std::byte byte) const noexcept { return characters[std::to_integer<std::size_t>(byte)]; }

  /// The byte of a character; '?' for one that the page does not have.
  [[nodiscard]] std::byte Encode(wchar_t character) const noexcept;
};

/// The stand-in for a byte that is no character by itself.
[[nodiscard]] constexpr wchar_t PrivateCharacter(unsigned byte) noexcept { return static_cast<wchar_t>(0xF700 + byte); }

/// The system's code page. It does not change while the process lives.
[[nodiscard]] const CodePage& SystemCodePage();

}  // namespace runtime
