#include "tray/shell_notifier.h"

namespace tidewell {

void ShellNotifier::Apply(TrayCommand command) noexcept {
  switch (command) {
    case TrayCommand::Add:
      wanted_ = true;
      stands_ = NotifyShell(command);
      break;
    case TrayCommand::Modify:
      // Check wanted_ after the call: the shell may have sent a message that ended the program.
      stands_ = NotifyShell(command) || (wanted_ && NotifyShell(TrayCommand::Add));
      break;
    case TrayCommand::Delete:
      if (wanted_) {
        wanted_ = stands_ = false;
        if (!NotifyShell(command)) {
          NotifyShell(command);  // the shell may have been busy
        }
      }
      break;
  }
}

void ShellNotifier::RestoreIcon() noexcept {
  if (wanted_) {
    Apply(TrayCommand::Modify);
  }
}

}  // namespace tidewell
