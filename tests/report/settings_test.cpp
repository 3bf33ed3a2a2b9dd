#include "report/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <numeric>
#include <string>
#include <vector>

#include "support/code_pages.h"

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

/// A field: its place in the file, and how to fill it with bytes, lowest first.
struct FieldPlace {
  std::string name;
  std::size_t offset, width;
  std::function<void(SettingsRecord&)> fill;
};

// Each number or text holds the bytes 1, 2, 3, ..., lowest first.
constexpr std::int16_t k16 = 0x0201;
constexpr std::uint32_t k32 = 0x04030201;
constexpr std::uint64_t k64 = 0x0807060504030201;

std::vector<FieldPlace> Places() {
  const auto count = [](auto& text) { std::iota(text.begin(), text.end(), L'\1'); };
  std::vector<FieldPlace> places = {
      {"2", 4, 16, [=](SettingsRecord& r) { count(r.Reserved2); }},
      {"3", 20, 196, [=](SettingsRecord& r) { count(r.Reserved3); }},
      {"1", 0, 4, [](SettingsRecord& r) { r.Reserved1 = k32; }},
      {"4", 216, 2, [](SettingsRecord& r) { r.Reserved4 = k16; }},
      {"5", 218, 2, [](SettingsRecord& r) { r.Reserved5 = k16; }},
      {"6", 220, 2, [](SettingsRecord& r) { r.Reserved6 = k16; }},
      {"7", 222, 8, [](SettingsRecord& r) { r.Reserved7 = k64; }},
      {"8", 230, 2, [](SettingsRecord& r) { r.Reserved8 = k16; }},
      {"9", 232, 8, [](SettingsRecord& r) { r.Reserved9 = k64; }},
      {"10", 240, 4, [](SettingsRecord& r) { r.Reserved10 = k32; }},
      {"11", 244, 2, [](SettingsRecord& r) { r.Reserved11 = k16; }},
      {"12", 246, 4, [](SettingsRecord& r) { r.Reserved12 = k32; }},
      {"21", 266, 2, [](SettingsRecord& r) { r.RestoreInTray = k16; }},
      {"22", 268, 2, [](SettingsRecord& r) { r.AutoStart = k16; }},
      {"23", 270, 2, [](SettingsRecord& r) { r.SouthernView = k16; }},
      {"24", 272, 2, [](SettingsRecord& r) { r.Reserved24 = k16; }},
  };
  for (std::size_t i = 0; i < 8; ++i) {
    places.push_back(
        {std::to_string(13 + i), 250 + 2 * i, 2, [i](SettingsRecord& r) { r.Reserved13To20.at(i) = k16; }});
  }
  return places;
}

/// Each byte differs from its neighbours.
SettingsBytes PatternBytes(unsigned first) {
  SettingsBytes bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes.at(i) = std::byte((first + 37 * i) & 0xFF);
  }
  return bytes;
}

}  // namespace

TEST(SettingsRecord, HasEveryFieldAtItsPlaceInTheFile) {
  for (const FieldPlace& place : Places()) {
    SettingsRecord record;
    place.fill(record);
    SettingsBytes want{};
    for (std::size_t i = 0; i < place.width; ++i) {
      want.at(place.offset + i) = std::byte(i + 1);
    }
    EXPECT_EQ(Pack(record, support::Latin1Page()), want) << "field " << place.name;
    EXPECT_EQ(Unpack(want, support::Latin1Page()), record) << "field " << place.name;
  }
}

TEST(SettingsRecord, TheFieldsFillTheWholeRecord) {
  SettingsRecord record;
  for (const FieldPlace& place : Places()) {
    place.fill(record);
  }
  const SettingsBytes bytes = Pack(record, support::Latin1Page());
  EXPECT_EQ(bytes.size(), 274U);
  EXPECT_EQ(std::ranges::count(bytes, std::byte{0}), 0) << "bytes that no field fills";
}

TEST(SettingsRecord, ZerosReadAsAnEmptyRecord) {
  EXPECT_EQ(Unpack({}, support::Latin1Page()), SettingsRecord{});
  EXPECT_EQ(Pack({}, support::Latin1Page()), SettingsBytes{});
}

TEST(SettingsRecord, EveryByteOfEveryFieldSurvivesBothWays) {
  for (const runtime::CodePage& page : {support::Latin1Page(), support::PageWithPrivateCharacters()}) {
    for (unsigned first = 0; first < 256; ++first) {
      const SettingsBytes bytes = PatternBytes(first);
      ASSERT_EQ(Pack(Unpack(bytes, page), page), bytes) << first;
    }
  }
}

TEST(SettingsRecord, TextsAreCharactersOfTheCodePage) {
  SettingsBytes bytes{};
  bytes.at(4) = std::byte{0x80};
  bytes.at(215) = std::byte{0x81};
  const SettingsRecord record = Unpack(bytes, support::PageWithPrivateCharacters());
  EXPECT_EQ(record.Reserved2.at(0), L'\x20AC');
  EXPECT_EQ(record.Reserved3.at(195), runtime::PrivateCharacter(0x81));
}

TEST(SettingsRecord, BooleansAreAllOnesOrZero) {
  SettingsRecord record;
  record.RestoreInTray = True;
  const SettingsBytes bytes = Pack(record, support::Latin1Page());
  EXPECT_EQ(bytes.at(266), std::byte{0xFF});
  EXPECT_EQ(bytes.at(267), std::byte{0xFF});
  EXPECT_EQ(bytes.at(268), std::byte{0});
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
