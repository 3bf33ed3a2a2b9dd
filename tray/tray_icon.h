#pragma once

#include <cstdint>

namespace mMoon {

/// The commands of the tray icon, as the shell numbers them.
enum class TrayCommand : std::uint32_t { Add = 0, Modify = 1, Delete = 2 };

/// Hands TrayIconData to the shell, in its 8-bit form, and takes it back.
/// Returned: whether the shell carried the command out.
bool NotifyShell(TrayCommand command) noexcept;

}  // namespace mMoon
