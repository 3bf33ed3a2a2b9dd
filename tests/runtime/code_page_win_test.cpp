#include <gtest/gtest.h>
#include <windows.h>

#include "runtime/code_page.h"

namespace {

/// A title set with the ANSI call and read with the wide one goes through the system's own conversion.
TEST(SystemCodePage, IsThatOfTheAnsiCalls) {
  const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
  for (int value = 1; value < 256; ++value) {
    const char narrow[] = {static_cast<char>(value), '\0'};
    SetWindowTextA(window, narrow);
    wchar_t wide[3] = L"";
    GetWindowTextW(window, wide, 3);
    const wchar_t character = runtime::SystemCodePage().Decode(static_cast<std::byte>(value));
    EXPECT_TRUE(character == wide[0] || character == runtime::PrivateCharacter(static_cast<unsigned>(value))) << value;
  }
  DestroyWindow(window);
}

TEST(SystemCodePage, CarriesEveryByteToTextAndBack) {
  const runtime::CodePage& page = runtime::SystemCodePage();
  for (int value = 0; value < 256; ++value) {
    const auto byte = static_cast<std::byte>(value);
    ASSERT_EQ(page.Encode(page.Decode(byte)), byte) << value;
  }
  EXPECT_EQ(page.Decode(std::byte{'A'}), L'A');
}

}  // namespace
