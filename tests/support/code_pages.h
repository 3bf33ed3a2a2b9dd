#pragma once

#include "runtime/code_page.h"

namespace support {

/// Every byte is the character of its own number.
[[nodiscard]] inline runtime::CodePage Latin1Page() {
  runtime::CodePage page{};
  for (unsigned byte = 0; byte < page.characters.size(); ++byte) {
    page.characters.at(byte) = static_cast<wchar_t>(byte);
  }
  return page;
}

/// A page with holes, like the system's: 0x81, 0x8D and 0x90 are no characters, 0x80 is the euro.
[[nodiscard]] inline runtime::CodePage PageWithPrivateCharacters() {
  runtime::CodePage page = Latin1Page();
  page.characters.at(0x80) = L'\x20AC';
  for (const unsigned byte : {0x81U, 0x8DU, 0x90U}) {
    page.characters.at(byte) = runtime::PrivateCharacter(byte);
  }
  return page;
}

}  // namespace support
