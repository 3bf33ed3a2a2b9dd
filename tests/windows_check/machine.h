#pragma once

#include <string>

namespace check {

/// Returns the report's first lines: Windows version and build, density, locale, zone.
[[nodiscard]] std::wstring DescribeMachine();

}  // namespace check
