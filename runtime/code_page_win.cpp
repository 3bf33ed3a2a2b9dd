#include <windows.h>

#include "runtime/code_page.h"

namespace runtime {

namespace {

CodePage ReadSystemCodePage() {
  CodePage page{};
  for (unsigned byte = 0; byte < page.characters.size(); ++byte) {
    const char narrow = static_cast<char>(byte);
    wchar_t wide = 0;
    char back = 0;
    // Lead bytes and unassigned bytes do not survive the round trip. ASCII is the same in every code page, even if the
    // system refuses to convert it.
    const bool ownCharacter = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1) == 1 &&
                              WideCharToMultiByte(CP_ACP, 0, &wide, 1, &back, 1, nullptr, nullptr) == 1 &&
                              back == narrow;
    page.characters.at(byte) = ownCharacter ? wide : byte < 0x80 ? static_cast<wchar_t>(byte) : PrivateCharacter(byte);
  }
  return page;
}

}  // namespace

const CodePage& SystemCodePage() {
  static const CodePage page = ReadSystemCodePage();
  return page;
}

}  // namespace runtime
