#include "tray/tray_icon.h"

namespace tidewell {

void TrayIcon::Carry(TrayCommand command) noexcept {
  switch (command) {
    case TrayCommand::Add:
      wanted_ = true;
      NotifyShell(command);
      break;
    case TrayCommand::Modify:
      // The wish is looked at behind the call: the shell may have sent a message that ended the program meanwhile.
      if (!NotifyShell(command) && wanted_) {
        NotifyShell(TrayCommand::Add);
      }
      break;
    case TrayCommand::Delete:
      if (wanted_) {
        wanted_ = false;
        NotifyShell(command);
      }
      break;
  }
}

void TrayIcon::Restore() noexcept {
  if (wanted_) {
    Carry(TrayCommand::Modify);
  }
}

}  // namespace tidewell
