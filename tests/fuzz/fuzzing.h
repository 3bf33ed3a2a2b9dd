#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "runtime/runtime_error.h"

// What the fuzz targets share. A target calls the code with what the bytes make of it and ends the process when a
// result breaks a rule. An exception that is no RuntimeError is not caught, and ends the process, too.

namespace fuzzing {

/// The fuzzer's bytes, taken from the front as numbers in the machine's byte order. When they are used up, zeros
/// follow, so that a short input means something, too.
class Input {
 public:
  Input(const std::uint8_t* bytes, std::size_t size) : next_(bytes), left_(size) {}

  template <class Number>
  [[nodiscard]] Number Take() {
    Number number{};
    const std::size_t taken = std::min(sizeof number, left_);
    if (taken > 0) {
      std::memcpy(&number, next_, taken);
    }
    next_ += taken;
    left_ -= taken;
    return number;
  }

  [[nodiscard]] bool Empty() const { return left_ == 0; }

 private:
  const std::uint8_t* next_;
  std::size_t left_;
};

/// Ends the process, which the fuzzer reports with the input, when a rule is broken.
inline void Require(bool holds, const char* rule) {
  if (!holds) {
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
  }
}

/// Makes the call and returns the number of the RuntimeError that it raised.
template <class Call>
[[nodiscard]] std::optional<runtime::ErrorNumber> ErrorOf(Call call) {
  try {
    call();
  } catch (const runtime::RuntimeError& error) {
    return error.number();
  }
  return std::nullopt;
}

/// Requires that a call ended with a result or with one of the errors that arithmetic has.
inline void RequireArithmetic(std::optional<runtime::ErrorNumber> error) {
  using runtime::ErrorNumber;
  Require(!error || *error == ErrorNumber::Overflow || *error == ErrorNumber::InvalidProcedureCall ||
              *error == ErrorNumber::DivisionByZero,
          "an error of arithmetic is 5, 6 or 11");
}

/// False for a NaN.
[[nodiscard]] inline bool Within(double low, double value, double high) { return low <= value && value <= high; }

}  // namespace fuzzing

/// The entry that the fuzzer calls. What it returns says only that the input may be kept.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
