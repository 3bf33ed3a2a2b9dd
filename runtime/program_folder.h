#pragma once

#include <string>

namespace runtime {

/// Returns the folder of the program's executable, without a closing backslash. Never the current folder, which is
/// whatever the starter left.
[[nodiscard]] std::wstring ProgramFolder();

}  // namespace runtime
