#pragma once

#include <cstdint>

namespace tidewell {

/// The commands of the tray icon, as the shell numbers them.
enum class TrayCommand : std::int32_t { Add = 0, Modify = 1, Delete = 2 };

/// Hands TrayIconData to the shell, in its 8-bit form, and takes it back.
/// Returned: whether the shell carried the command out.
bool NotifyShell(TrayCommand command) noexcept;

/// The program's icon in the tray, as TrayIconData describes it. Remembers whether the icon is wanted and whether it
/// stands there; copes with a shell that starts late or restarts. A shell that refuses is not reported.
class TrayIcon {
 public:
  /// Applies a command. A change that fails while the icon is wanted adds it. A removal that fails is tried once
  /// more; an icon that was never added, or was removed, is not removed.
  void Apply(TrayCommand command) noexcept;

  /// Brings the icon back, if it is wanted: the shell has made its task bar. It may still have the icon, and adding a
  /// living icon fails: the icon is changed first.
  void Restore() noexcept;

  /// Whether the icon was added and not removed since.
  [[nodiscard]] bool Wanted() const noexcept { return wanted_; }

  /// Whether the shell has taken the icon at the last attempt.
  [[nodiscard]] bool Stands() const noexcept { return stands_; }

 private:
  bool wanted_ = false;
  bool stands_ = false;
};

}  // namespace tidewell
