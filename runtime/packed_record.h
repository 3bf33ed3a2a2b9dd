#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "runtime/code_page.h"

namespace runtime {

// Records that leave the program are packed: one field after the other without padding, numbers little-endian, wide
// texts as single bytes of a code page. A record type lists its fields once, in a VisitFields that calls a visitor with
// each; a static_assert with FieldCounter and FieldCount holds that none is forgotten.

/// Counts the fields that it is called with, and their packed bytes.
struct FieldCounter {
  std::size_t fields = 0;
  std::size_t bytes = 0;

  template <class Field>
  constexpr void operator()(const Field& field) {
    ++fields;
    if constexpr (std::is_integral_v<Field>) {
      bytes += sizeof field;
    } else {
      bytes += field.size() * (std::is_same_v<typename Field::value_type, wchar_t> ? 1 : sizeof(*field.data()));
    }
  }
};

/// Stands for a value of any type where the fields of a record are counted.
struct AnyValue {
  template <class Value>
  operator Value() const;  // NOLINT(google-explicit-constructor): it is converted to each field's type
};

/// Returns the number of fields of an aggregate: of values that its braces take.
template <class Record, class... Values>
consteval std::size_t FieldCount() {
  if constexpr (requires { Record{Values{}..., AnyValue{}}; }) {
    return FieldCount<Record, Values..., AnyValue>();
  } else {
    return sizeof...(Values);
  }
}

/// Appends each field that it is called with to the bytes.
template <std::size_t Size>
class FieldPacker {
 public:
  FieldPacker(std::array<std::byte, Size>& bytes, const CodePage& codePage) : bytes_(bytes), codePage_(codePage) {}

  template <class Field>
  void operator()(const Field& field) {
    if constexpr (std::is_integral_v<Field>) {
      const auto bits = static_cast<std::uint64_t>(field);
      for (std::size_t i = 0; i < sizeof field; ++i) {
        bytes_.at(offset_++) = static_cast<std::byte>(bits >> (8 * i));
      }
    } else if constexpr (std::is_same_v<typename Field::value_type, wchar_t>) {
      for (const wchar_t character : field) {
        bytes_.at(offset_++) = codePage_.Encode(character);
      }
    } else {
      for (const auto& number : field) {
        (*this)(number);
      }
    }
  }

 private:
  std::array<std::byte, Size>& bytes_;
  const CodePage& codePage_;
  std::size_t offset_ = 0;
};

/// Takes each field that it is called with from the bytes.
template <std::size_t Size>
class FieldUnpacker {
 public:
  FieldUnpacker(const std::array<std::byte, Size>& bytes, const CodePage& codePage)
      : bytes_(bytes), codePage_(codePage) {}

  template <class Field>
  void operator()(Field& field) {
    if constexpr (std::is_integral_v<Field>) {
      std::uint64_t bits = 0;
      for (std::size_t i = 0; i < sizeof field; ++i) {
        bits |= std::to_integer<std::uint64_t>(bytes_.at(offset_++)) << (8 * i);
      }
      field = static_cast<Field>(bits);
    } else if constexpr (std::is_same_v<typename Field::value_type, wchar_t>) {
      for (wchar_t& character : field) {
        character = codePage_.Decode(bytes_.at(offset_++));
      }
    } else {
      for (auto& number : field) {
        (*this)(number);
      }
    }
  }

 private:
  const std::array<std::byte, Size>& bytes_;
  const CodePage& codePage_;
  std::size_t offset_ = 0;
};

}  // namespace runtime
