#include <gtest/gtest.h>
#include <windows.h>

#include "runtime/code_page.h"

namespace {

/// A title set with the ANSI call and read with the wide one goes through the system's own conversion.
TEST(SystemCodePage, IsThatOfTheAnsiCallsAndCarriesEveryByteToTextAndBack) {
  const runtime::CodePage& page = runtime::SystemCodePage();
  const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
  for (int value = 0; value < 256; ++value) {
    const char narrow[] = {static_cast<char>(value), '\0'};
    SetWindowTextA(window, narrow);
    wchar_t wide[3] = L"";
    GetWindowTextW(window, wide, 3);
    const auto byte = static_cast<std::byte>(value);
    const wchar_t character = page.Decode(byte);
    EXPECT_TRUE(character == wide[0] || character == runtime::PrivateCharacter(static_cast<unsigned>(value))) << value;
    EXPECT_EQ(page.Encode(character), byte) << value;
  }
  EXPECT_EQ(page.Decode(std::byte{'A'}), L'A');
  DestroyWindow(window);
}

}  // namespace
