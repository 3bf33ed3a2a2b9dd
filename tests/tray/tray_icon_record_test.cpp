#include "tray/tray_icon_record.h"

#include <gtest/gtest.h>

#include <string>

#include "support/code_pages.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

std::wstring TipOf(const TrayIconRecord& record) { return {record.szTip.begin(), record.szTip.end()}; }

}  // namespace

TEST(TrayIconRecord, TipIsCutAtItsWidth) {
  TrayIconRecord record;
  const std::wstring full = L"<" + std::wstring(62, L'x') + L">";
  record.SetTip(full);
  EXPECT_EQ(TipOf(record), full);
  record.SetTip(full + L"y");
  EXPECT_EQ(TipOf(record), full);
}

TEST(TrayIconRecord, PacksInto88Bytes) {
  TrayIconRecord record = {.cbSize = 0x01020304,
                           .hWnd = 0x11121314,
                           .uID = 0x21222324,
                           .uFlags = 0x31323334,
                           .uCallbackMessage = 0x41424344,
                           .hIcon = 0xF1F2F3F4};
  record.SetTip(L"tip \x20AC");
  const TrayIconBytes bytes = Pack(record, support::PageWithPrivateCharacters());
  ASSERT_EQ(bytes.size(), 88U);
  for (unsigned field = 0; field < 5; ++field) {
    for (unsigned i = 0; i < 4; ++i) {
      EXPECT_EQ(bytes.at(4 * field + i), std::byte(0x10 * field + 4 - i));
    }
  }
  EXPECT_EQ(bytes.at(20), std::byte{0xF4});
  EXPECT_EQ(bytes.at(23), std::byte{0xF1});
  EXPECT_EQ(bytes.at(24), std::byte{'t'});
  EXPECT_EQ(bytes.at(28), std::byte{0x80});
  EXPECT_EQ(bytes.at(29), std::byte{' '});
  EXPECT_EQ(bytes.at(87), std::byte{' '});
  EXPECT_EQ(Unpack(bytes, support::PageWithPrivateCharacters()), record);
}

}  // namespace tidewell
