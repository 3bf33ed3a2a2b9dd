#include "tray/tray_icon_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/code_pages.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

TEST(TrayIconRecord, TipIsCutAtItsWidth) {
  const std::wstring full = L"<" + std::wstring(62, L'x') + L">";
  for (const std::wstring& tip : {full, full + L"y"}) {
    TrayIconRecord record;
    record.SetTip(tip);
    EXPECT_EQ(std::wstring(record.szTip.begin(), record.szTip.end()), full);
  }
}

TEST(TrayIconRecord, PacksInto88Bytes) {
  const runtime::CodePage page = support::PageWithPrivateCharacters();
  TrayIconBytes bytes{};
  std::ranges::generate(bytes, [next = 0x40U]() mutable { return std::byte(next++); });
  const TrayIconRecord record = Unpack(bytes, page);
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
