#pragma once

#include <string>

namespace check {

/// Returns what the report begins with: the Windows version and build, the density, the locale and the zone.
[[nodiscard]] std::wstring DescribeMachine();

}  // namespace check
