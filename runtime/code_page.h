#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace runtime {

/// A system code page as a table of one wide character for each byte, in which no two bytes share a character, so that
/// every byte survives the way to text and back. Bytes that are no character of their own in the page (lead bytes of
/// longer sequences, holes) stand for characters of the private use area.
struct CodePage {
  std::array<wchar_t, 256> characters;

  /// The character of a byte.
  [[nodiscard]] wchar_t Decode(std::byte byte) const noexcept { return characters[std::to_integer<std::size_t>(byte)]; }

  /// The byte of a character; '?' for one that the page does not have.
  [[nodiscard]] std::byte Encode(wchar_t character) const noexcept;
};

/// Stands in for a byte that the code page cannot turn into a character of its own.
[[nodiscard]] constexpr wchar_t PrivateCharacter(unsigned byte) noexcept { return static_cast<wchar_t>(0xF700 + byte); }

/// The system's code page, which stays for the life of a process.
[[nodiscard]] const CodePage& SystemCodePage();

}  // namespace runtime
