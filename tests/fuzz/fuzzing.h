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

// What the fuzz targets share. A target turns the bytes into arguments, calls the code and ends the process if a result
// breaks a rule. It catches only RuntimeError: any other exception ends the process too.

namespace fuzzing {

/// Takes numbers from the front of the fuzzer's bytes, in the machine's byte order. After the last byte zeros follow,
/// so that a short input is valid.
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

/// Ends the process if a rule is broken. The fuzzer then reports the input.
inline void Require(bool holds, const char* rule) {
  if (!holds) {
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
  }
}

/// The number of the RuntimeError that the call raises, if any.
template <class Call>
[[nodiscard]] std::optional<runtime::ErrorNumber> ErrorOf(Call call) {
  try {
    call();
  } catch (const runtime::RuntimeError& error) {
    return error.number();
  }
  return std::nullopt;
}

/// Requires success or one of the errors of arithmetic.
inline void RequireArithmetic(std::optional<runtime::ErrorNumber> error) {
  using runtime::ErrorNumber;
  Require(!error || *error == ErrorNumber::Overflow || *error == ErrorNumber::InvalidProcedureCall ||
              *error == ErrorNumber::DivisionByZero,
          "an error of arithmetic is 5, 6 or 11");
}

/// False for a NaN.
[[nodiscard]] inline bool Within(double low, double value, double high) { return low <= value && value <= high; }

}  // namespace fuzzing

/// The fuzzer calls this. 0 means that the input may be kept.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
