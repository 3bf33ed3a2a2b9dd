#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "runtime/code_page.h"

namespace runtime {

// Records that leave the program are packed: one field after the other without padding, numbers little-endian, wide
// texts as single bytes of a code page. A record type lists its fields once, in a VisitFields that calls a visitor with
// each. It takes them from the record by a structured binding, so that a field that is not listed does not compile, and
// a static_assert holds what it visits to the record's packed size.

/// Counts the packed bytes of the fields that it is called with.
class FieldCounter {
 public:
  constexpr explicit FieldCounter(std::size_t& size) : size_(size) {}

  template <class Field>
  constexpr void operator()(const Field& field) {
    if constexpr (std::is_integral_v<Field>) {
      size_ += sizeof field;
    } else {
      size_ += field.size();
    }
  }

 private:
  std::size_t& size_;
};

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
    } else {
      for (const wchar_t character : field) {
        bytes_.at(offset_++) = codePage_.Encode(character);
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
    } else {
      for (wchar_t& character : field) {
        character = codePage_.Decode(bytes_.at(offset_++));
      }
    }
  }

 private:
  const std::array<std::byte, Size>& bytes_;
  const CodePage& codePage_;
  std::size_t offset_ = 0;
};

}  // namespace runtime
