#pragma once

#include <gtest/gtest.h>

#include "runtime/runtime_error.h"

namespace support {

/// Success when the call raises that run-time error.
template <class Call>
[[nodiscard]] ::testing::AssertionResult Raises(runtime::ErrorNumber want, Call call) {
  try {
    call();
  } catch (const runtime::RuntimeError& error) {
    if (error.number() == want) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "want error " << static_cast<int>(want) << " " << runtime::ErrorText(want)
                                         << ", got " << static_cast<int>(error.number()) << " " << error.what();
  }
  return ::testing::AssertionFailure() << "want error " << static_cast<int>(want) << " " << runtime::ErrorText(want)
                                       << ", got none";
}

}  // namespace support
