#pragma once

#include <cstdint>

namespace tidewell {

/// The commands of the tray icon, as the shell numbers them.
enum class TrayCommand : std::int32_t { Add = 0, Modify = 1, Delete = 2 };

/// Passes TrayIconData to the shell in its 8-bit form and takes it back. Returns whether the shell did as told.
bool NotifyShell(TrayCommand command) noexcept;

/// Tells the shell about the tray icon that TrayIconData describes. Remembers whether the icon is wanted and whether it
/// stands; copes with a shell that starts late or restarts. A shell that refuses is not reported.
class ShellNotifier {
 public:
  /// Applies a command. If a change fails and the icon is wanted, adds it. If a removal fails, tries once more; removes
  /// only an icon that was added.
  void Apply(TrayCommand command) noexcept;

  /// Brings the icon back, if it is wanted, to a new task bar. Adding an icon that is there fails, so it is changed
  /// first.
  void RestoreIcon() noexcept;

  /// Whether the icon was added and not removed since.
  [[nodiscard]] bool IconWanted() const noexcept { return wanted_; }

  /// Whether the shell took the icon at the last attempt.
  [[nodiscard]] bool IconStands() const noexcept { return stands_; }

 private:
  bool wanted_ = false;
  bool stands_ = false;
};

}  // namespace tidewell
