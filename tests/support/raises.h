#pragma once

#include <gtest/gtest.h>

#include "runtime/runtime_error.h"

namespace support {

/// Success when the call raises that run-time error.
template <class Call>
[[nodiscard]] ::testing::AssertionResult Raises(runtime::ErrorNumber want, Call call) {
  const char* got = "none";
  try {
    call();
  } catch (const runtime::RuntimeError& error) {
    if (error.number() == want) {
      return ::testing::AssertionSuccess();
    }
    got = runtime::ErrorText(error.number());
  }
  return ::testing::AssertionFailure() << "want error '" << runtime::ErrorText(want) << "', got '" << got << "'";
}

}  // namespace support
