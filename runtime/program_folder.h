#pragma once

#include <string>

namespace runtime {

/// Returns the folder of the executable, without a trailing backslash. Never the current folder, which depends on who
/// started the program. Error: 76 Path not found if the system does not name it.
[[nodiscard]] std::wstring ProgramFolder();

}  // namespace runtime
