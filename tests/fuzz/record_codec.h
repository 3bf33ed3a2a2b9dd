#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

#include "fuzz/fuzzing.h"
#include "runtime/code_page.h"

// The rules of the packed records, the same for each of them.

namespace fuzzing {

/// A code page in which no two bytes share a character: 256 steps of an odd width around the 16-bit characters.
[[nodiscard]] inline runtime::CodePage TakeCodePage(Input& input) {
  const auto first = input.Take<std::uint16_t>();
  const auto step = static_cast<std::uint16_t>(input.Take<std::uint16_t>() | 1U);
  runtime::CodePage page{};
  for (unsigned byte = 0; byte < page.characters.size(); ++byte) {
    page.characters.at(byte) = static_cast<wchar_t>(static_cast<std::uint16_t>(first + byte * step));
  }
  return page;
}

/// Swaps the characters of pairs of bytes, as long as there is input: any order of a page's characters.
inline void Shuffle(runtime::CodePage& page, Input& input) {
  while (!input.Empty()) {
    const auto one = input.Take<std::uint8_t>();
    const auto other = input.Take<std::uint8_t>();
    std::swap(page.characters.at(one), page.characters.at(other));
  }
}

template <class Bytes>
[[nodiscard]] Bytes TakeBytes(Input& input) {
  Bytes bytes{};
  for (std::byte& byte : bytes) {
    byte = input.Take<std::byte>();
  }
  return bytes;
}

/// Any characters, many of them outside the code page.
template <class Text>
void TakeCharacters(Text& text, Input& input) {
  for (wchar_t& character : text) {
    character = static_cast<wchar_t>(input.Take<std::uint16_t>());
  }
}

/// What a character becomes on the way to its byte and back: itself, or the question mark's byte.
inline void RequireTextCarried(wchar_t before, wchar_t after, const runtime::CodePage& page) {
  Require(after == before || after == page.Decode(std::byte{'?'}), "a character is carried or stands as byte 3F");
  if (after != before) {
    const auto known = std::find(page.characters.begin(), page.characters.end(), before);
    Require(known == page.characters.end(), "a character of the page is carried");
  }
}

}  // namespace fuzzing
