#include "runtime/code_page.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "support/code_pages.h"

using runtime::CodePage;
using support::Latin1Page;
using support::PageWithPrivateCharacters;

TEST(CodePage, WritesAQuestionMarkForACharacterItDoesNotHave) {
  EXPECT_EQ(Latin1Page().Encode(L'\x2603'), std::byte{'?'});
  EXPECT_EQ(PageWithPrivateCharacters().Encode(L'\x0081'), std::byte{'?'});
}

TEST(CodePage, PrivateCharactersDifferByByte) {
  EXPECT_EQ(runtime::PrivateCharacter(0x81), L'\xF781');
  EXPECT_EQ(runtime::PrivateCharacter(0xFF), L'\xF7FF');
}

// This is why no character may stand twice on a page: the second byte would not survive.
TEST(CodePage, WritesTheFirstOfTwoBytesThatShareACharacter) {
  CodePage page = Latin1Page();
  page.characters.at(0x8D) = page.characters.at(0x81);
  EXPECT_EQ(page.Encode(page.Decode(std::byte{0x8D})), std::byte{0x81});
}
