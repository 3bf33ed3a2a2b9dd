#include "report/settings.h"

#include <type_traits>

#include "forms/code_page.h"

namespace mMoon {

SettingsRecord Settings;

namespace {

/// Calls visit with each field in the order of the file.
template <class Record, class Visitor>
void VisitFields(Record& record, Visitor visit) {
  visit(record.Reserved1);
  visit(record.Reserved2);
  visit(record.Reserved3);
  visit(record.Reserved4);
  visit(record.Reserved5);
  visit(record.Reserved6);
  visit(record.Reserved7);
  visit(record.Reserved8);
  visit(record.Reserved9);
  visit(record.Reserved10);
  visit(record.Reserved11);
  visit(record.Reserved12);
  for (auto& field : record.Reserved13To20) {
    visit(field);
  }
  visit(record.RestoreInTray);
  visit(record.AutoStart);
  visit(record.SouthernView);
  visit(record.Reserved24);
}

}  // namespace

SettingsBytes Pack(const SettingsRecord& record, const forms::CodePage& codePage) {
  SettingsBytes bytes{};
  std::size_t offset = 0;
  VisitFields(record, [&](const auto& field) {
    if constexpr (std::is_integral_v<std::remove_cvref_t<decltype(field)>>) {
      const auto bits = static_cast<std::uint64_t>(field);
      for (std::size_t i = 0; i < sizeof field; ++i) {
        bytes.at(offset++) = static_cast<std::byte>(bits >> (8 * i));
      }
    } else {
      for (const wchar_t character : field) {
        bytes.at(offset++) = codePage.Encode(character);
      }
    }
  });
  return bytes;
}

SettingsRecord Unpack(const SettingsBytes& bytes, const forms::CodePage& codePage) {
  SettingsRecord record;
  std::size_t offset = 0;
  VisitFields(record, [&](auto& field) {
    if constexpr (std::is_integral_v<std::remove_cvref_t<decltype(field)>>) {
      std::uint64_t bits = 0;
      for (std::size_t i = 0; i < sizeof field; ++i) {
        bits |= std::to_integer<std::uint64_t>(bytes.at(offset++)) << (8 * i);
      }
      field = static_cast<std::remove_cvref_t<decltype(field)>>(bits);
    } else {
      for (wchar_t& character : field) {
        character = codePage.Decode(bytes.at(offset++));
      }
    }
  });
  return record;
}

}  // namespace mMoon
