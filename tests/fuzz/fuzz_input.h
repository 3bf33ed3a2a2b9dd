#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "astro/runtime_error.h"

/// What a fuzz target is fed with, as the program's types.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

  /// A number of any bit pattern.
  template <class Number>
  Number Any() {
    std::uint64_t bits = bytes_.ConsumeIntegral<std::uint64_t>();
    Number number;
    std::memcpy(&number, &bits, sizeof number);
    return number;
  }

  int Between(int low, int high) { return bytes_.ConsumeIntegralInRange(low, high); }

  std::vector<std::uint8_t> Bytes(std::size_t count) {
    auto bytes = bytes_.ConsumeBytes<std::uint8_t>(count);
    bytes.resize(count);
    return bytes;
  }

 private:
  FuzzedDataProvider bytes_;
};

/// Ends the run when something holds not.
inline void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
  }
}

/// Runs an action that may end in one of the named run-time errors, and in nothing else.
template <class Action>
void MayRaise(Action action) {
  try {
    action();
  } catch (const mMoon::RuntimeError&) {
    return;
  }
}
