#include "report/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "support/code_pages.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

TEST(SettingsRecord, HasEveryFieldAtItsPlaceInTheFile) {
  SettingsBytes bytes{};
  std::ranges::generate(bytes, [next = 0U]() mutable { return std::byte(next++ & 0xFF); });
  const SettingsRecord record = Unpack(bytes, support::Latin1Page());
  unsigned place = 0;
  const auto expectNext = [&](auto number) {
    for (unsigned i = 0; i < sizeof number; ++i, ++place) {
      EXPECT_EQ(static_cast<unsigned>(number >> 8 * i) & 0xFF, place & 0xFF) << "byte " << place;
    }
  };
  const auto expectNextText = [&](const auto& text) {
    for (const wchar_t character : text) {
      expectNext(static_cast<std::uint8_t>(character));
    }
  };
  expectNext(record.Reserved1);
  expectNextText(record.Reserved2);
  expectNextText(record.Reserved3);
  expectNext(record.Reserved4);
  expectNext(record.Reserved5);
  expectNext(record.Reserved6);
  expectNext(record.Reserved7);
  expectNext(record.Reserved8);
  expectNext(record.Reserved9);
  expectNext(record.Reserved10);
  expectNext(record.Reserved11);
  expectNext(record.Reserved12);
  std::ranges::for_each(record.Reserved13To20, expectNext);
  expectNext(record.RestoreInTray);
  expectNext(record.AutoStart);
  expectNext(record.SouthernView);
  expectNext(record.Reserved24);
  EXPECT_EQ(place, 274U);
  EXPECT_EQ(Pack(record, support::Latin1Page()), bytes);
}

TEST(SettingsRecord, ZerosReadAsAnEmptyRecord) {
  EXPECT_EQ(Unpack({}, support::Latin1Page()), SettingsRecord{});
  EXPECT_EQ(Pack({}, support::Latin1Page()), SettingsBytes{});
}

TEST(SettingsRecord, EveryByteOfEveryFieldSurvivesBothWays) {
  for (const runtime::CodePage& page : {support::Latin1Page(), support::PageWithPrivateCharacters()}) {
    for (unsigned value = 0; value < 256; ++value) {
      SettingsBytes bytes{};
      bytes.fill(std::byte(value));
      ASSERT_EQ(Pack(Unpack(bytes, page), page), bytes) << value;
    }
  }
}

TEST(SettingsRecord, OptionIsTrueForTheCheckedStateOnly) {
  EXPECT_EQ(OptionFromState(1), -1);
  for (const int state : {0, 2, -1, 256}) {
    EXPECT_EQ(OptionFromState(state), 0) << state;
  }
}

TEST(SettingsRecord, StateIsCheckedForMinusOneOnly) {
  EXPECT_EQ(StateFromOption(-1), 1);
  for (const Boolean option : std::initializer_list<Boolean>{0, 1, 2, -2, 255, -32768}) {
    EXPECT_EQ(StateFromOption(option), 0) << option;
  }
}

}  // namespace tidewell
