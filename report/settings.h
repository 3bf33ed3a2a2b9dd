#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "runtime/boolean.h"
#include "runtime/code_page.h"

namespace tidewell {

/// A text of fixed length.
template <std::size_t Length>
using FixedText = std::array<wchar_t, Length>;

/// The settings record. This program uses only the three options; the other fields belong to other writers and pass
/// through unchanged, to the bit.
struct SettingsRecord {
  std::uint32_t Reserved1 = 0;
  FixedText<16> Reserved2{};
  FixedText<196> Reserved3{};
  std::int16_t Reserved4 = 0;
  std::int16_t Reserved5 = 0;
  std::int16_t Reserved6 = 0;
  std::uint64_t Reserved7 = 0;  ///< a double or a date, kept as bits: the x87 would change some NaNs
  std::int16_t Reserved8 = 0;
  std::uint64_t Reserved9 = 0;  ///< likewise
  std::uint32_t Reserved10 = 0;
  std::int16_t Reserved11 = 0;
  std::uint32_t Reserved12 = 0;
  std::array<std::int16_t, 8> Reserved13To20{};
  runtime::Boolean RestoreInTray = runtime::False;  ///< hide on closing; only stored: the check box decides
  runtime::Boolean AutoStart = runtime::False;      ///< stored only: no part of the program acts on it
  runtime::Boolean SouthernView = runtime::False;   ///< the picture and the icon are mirrored
  std::int16_t Reserved24 = 0;

  bool operator==(const SettingsRecord&) const = default;
};

/// The record's bytes in the file, packed (runtime/packed_record.h).
inline constexpr std::size_t kSettingsRecordSize = 274;
using SettingsBytes = std::array<std::byte, kSettingsRecordSize>;

/// Convert to those bytes and back. A character that the code page does not have becomes '?'.
[[nodiscard]] SettingsBytes Pack(const SettingsRecord& record, const runtime::CodePage& codePage);
[[nodiscard]] SettingsRecord Unpack(const SettingsBytes& bytes, const runtime::CodePage& codePage);

/// Turns the state of a check box into a stored option: true for exactly 1 (checked).
[[nodiscard]] constexpr runtime::Boolean OptionFromState(int state) {
  return state == 1 ? runtime::True : runtime::False;
}

/// Turns a stored option into the state of a check box: 1 (checked) for exactly -1.
[[nodiscard]] constexpr int StateFromOption(runtime::Boolean option) { return option == runtime::True ? 1 : 0; }

}  // namespace tidewell

namespace mMoon {

/// The record as last read from or written to the settings file.
inline tidewell::SettingsRecord Settings;

}  // namespace mMoon
