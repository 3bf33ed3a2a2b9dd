#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "runtime/code_page.h"

namespace runtime {

// Records that leave the program are packed: one field after the other without padding, numbers little-endian, wide
// texts as single bytes of a code page. A record type lists its fields once, in a VisitFields of its own namespace; a
// static_assert with FieldsFill checks that none is forgotten.

/// Counts fields and their packed bytes.
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

/// Converts to any type, to count the fields of a record.
struct AnyValue {
  template <class Value>
  operator Value() const;  // NOLINT(google-explicit-constructor): it is converted to each field's type
};

/// Returns the number of fields of an aggregate: how many values its braces take.
template <class Record, class... Values>
consteval std::size_t FieldCount() {
  if constexpr (requires { Record{Values{}..., AnyValue{}}; }) {
    return FieldCount<Record, Values..., AnyValue>();
  } else {
    return sizeof...(Values);
  }
}

/// Whether VisitFields visits every field of the record and they take Size bytes.
template <class Record, std::size_t Size>
consteval bool FieldsFill() {
  FieldCounter counter;
  const Record record;
  VisitFields(record, counter);
  return counter.fields == FieldCount<Record>() && counter.bytes == Size;
}

/// Appends each field to the bytes.
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

/// Takes each field from the bytes.
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

/// Packs a record. A character that the code page does not have becomes '?'.
template <std::size_t Size, class Record>
std::array<std::byte, Size> PackFields(const Record& record, const CodePage& codePage) {
  std::array<std::byte, Size> bytes{};
  VisitFields(record, FieldPacker(bytes, codePage));
  return bytes;
}

/// Unpacks a record.
template <class Record, std::size_t Size>
Record UnpackFields(const std::array<std::byte, Size>& bytes, const CodePage& codePage) {
  Record record;
  VisitFields(record, FieldUnpacker(bytes, codePage));
  return record;
}

}  // namespace runtime
