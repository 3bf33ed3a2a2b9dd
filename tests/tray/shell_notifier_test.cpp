#include "tray/shell_notifier.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using tidewell::TrayCommand;
using enum tidewell::TrayCommand;

/// Stands in for the shell: refuses what the real one refuses.
struct Shell {
  bool present = true;
  bool hasIcon = false;
  int busy = 0;  ///< the number of calls that fail next
  std::vector<TrayCommand> told;
  tidewell::ShellNotifier* removedMeanwhile = nullptr;
};
Shell shell;

}  // namespace

bool tidewell::NotifyShell(TrayCommand command) noexcept {
  shell.told.push_back(command);
  if (shell.removedMeanwhile != nullptr) {
    std::exchange(shell.removedMeanwhile, nullptr)->Apply(Delete);
  }
  if (shell.busy > 0 && shell.busy-- > 0) {
    return false;
  }
  if (!shell.present || shell.hasIcon == (command == Add)) {
    return false;
  }
  shell.hasIcon = command != Delete;
  return true;
}

namespace {

class TrayIcon : public ::testing::Test {
 protected:
  TrayIcon() { shell = {}; }

  tidewell::ShellNotifier notifier;
};

using Told = std::vector<TrayCommand>;

}  // namespace

TEST_F(TrayIcon, IsAddedChangedAndRemovedOnce) {
  notifier.Apply(Delete);
  notifier.Apply(Add);
  notifier.Apply(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(notifier.IconWanted());
  notifier.Apply(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(notifier.IconWanted());
  EXPECT_FALSE(notifier.IconStands());
  notifier.Apply(Delete);
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}

TEST_F(TrayIcon, IsRemovedAtTheSecondTryIfTheShellIsBusy) {
  notifier.Apply(Add);
  shell.busy = 1;
  notifier.Apply(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Delete}));
}

TEST_F(TrayIcon, ComesOnceALateShellStarts) {
  shell.present = false;
  notifier.Apply(Add);
  notifier.Apply(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(notifier.IconStands());
  shell.present = true;
  notifier.Apply(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(notifier.IconStands());
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify, Add}));
}

TEST_F(TrayIcon, ComesBackOnANewTaskBarEvenIfItIsStillThere) {
  notifier.Apply(Add);
  shell.hasIcon = false;
  notifier.RestoreIcon();
  EXPECT_TRUE(shell.hasIcon);
  notifier.RestoreIcon();
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify}));
}

TEST_F(TrayIcon, StaysAwayAfterItWasRemoved) {
  notifier.RestoreIcon();
  EXPECT_EQ(shell.told, Told{});
  notifier.Apply(Add);
  notifier.Apply(Delete);
  notifier.RestoreIcon();
  notifier.Apply(Modify);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Modify}));
}

TEST_F(TrayIcon, StaysAwayIfItIsRemovedDuringTheShellsCall) {
  notifier.Apply(Add);
  shell.removedMeanwhile = &notifier;
  notifier.Apply(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}
