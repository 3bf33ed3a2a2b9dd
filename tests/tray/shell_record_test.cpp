#include "tray/shell_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/code_pages.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

TEST(ShellRecord, TipIsCutAtItsWidth) {
  const std::wstring full = L"<" + std::wstring(62, L'x') + L">";
  for (const std::wstring& tip : {full, full + L"y"}) {
    ShellRecord record;
    record.SetTip(tip);
    EXPECT_EQ(std::wstring(record.szTip.begin(), record.szTip.end()), full);
  }
}

TEST(ShellRecord, PacksInto88Bytes) {
  const runtime::CodePage page = support::PageWithPrivateCharacters();
  ShellBytes bytes{};
  std::ranges::generate(bytes, [next = 0x40U]() mutable { return std::byte(next++); });
  const ShellRecord record = Unpack(bytes, page);
  EXPECT_EQ(record.cbSize, 0x43424140U);
  EXPECT_EQ(record.hWnd, 0x47464544U);
  EXPECT_EQ(record.uID, 0x4B4A4948U);
  EXPECT_EQ(record.uFlags, 0x4F4E4D4CU);
  EXPECT_EQ(record.uCallbackMessage, 0x53525150U);
  EXPECT_EQ(record.hIcon, 0x57565554U);
  EXPECT_EQ(record.szTip.front(), L'X');
  EXPECT_EQ(record.szTip.at(0x80 - 0x58), L'\x20AC');
  EXPECT_EQ(Pack(record, page), bytes);
}

}  // namespace tidewell
