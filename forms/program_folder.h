#pragma once

#include <string>

namespace forms {

/// Returns the folder of the program's executable, without a closing backslash. Never the current
/// folder, which is whatever the starter left.
[[nodiscard]] std::wstring ProgramFolder();

}  // namespace forms
