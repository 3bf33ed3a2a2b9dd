#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "support/other_windows_win.h"

namespace check {

inline constexpr DWORD kPatience = 20000;  ///< ms; only a failing check waits that long

/// Calls the condition until it is true; returns that result. After kPatience the check fails with `what`, which the
/// condition may change.
template <class Condition>
auto Until(const std::wstring& what, Condition condition) {
  const DWORD start = GetTickCount();
  while (true) {
    if (auto found = condition()) {
      return found;
    }
    if (GetTickCount() - start > kPatience) {
      throw std::runtime_error("not within 20 s: " + support::Utf8(what));
    }
    Sleep(10);
  }
}

/// Ends the check: it is not possible on this machine.
[[noreturn]] inline void NotHere(const std::wstring& why) {
  [&] { GTEST_SKIP() << why; }();
  throw testing::AssertionException({testing::TestPartResult::kSkip, __FILE__, __LINE__, ""});
}

/// Notes what a check has seen.
inline void Note(const std::wstring& seen) { testing::Test::RecordProperty("seen", support::Utf8(seen)); }

}  // namespace check
