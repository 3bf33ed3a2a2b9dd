#pragma once

#include <windows.h>

#include "windows_check/check.h"

namespace check {

inline constexpr DWORD kPatience = 20000;  ///< ms; only a failing check waits that long

/// Calls the condition until it is true; returns that result. The check fails after kPatience.
template <class Condition>
auto Until(const std::wstring& what, Condition condition) {
  const DWORD start = GetTickCount();
  while (true) {
    if (auto found = condition()) {
      return found;
    }
    if (GetTickCount() - start > kPatience) {
      throw Failed(what, L"nothing of it within 20 s");
    }
    Sleep(10);
  }
}

}  // namespace check
