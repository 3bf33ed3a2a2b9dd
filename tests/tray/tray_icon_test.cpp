#include "tray/tray_icon.h"

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
  tidewell::TrayIcon* removedMeanwhile = nullptr;
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

class TrayIconTest : public ::testing::Test {
 protected:
  TrayIconTest() { shell = {}; }

  tidewell::TrayIcon icon;
};

using Told = std::vector<TrayCommand>;

}  // namespace

TEST_F(TrayIconTest, IsAddedChangedAndRemovedOnce) {
  icon.Apply(Delete);
  icon.Apply(Add);
  icon.Apply(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(icon.Wanted());
  icon.Apply(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(icon.Wanted());
  EXPECT_FALSE(icon.Stands());
  icon.Apply(Delete);
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}

TEST_F(TrayIconTest, IsRemovedAtTheSecondTryIfTheShellIsBusy) {
  icon.Apply(Add);
  shell.busy = 1;
  icon.Apply(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Delete}));
}

TEST_F(TrayIconTest, ComesOnceALateShellStarts) {
  shell.present = false;
  icon.Apply(Add);
  icon.Apply(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(icon.Stands());
  shell.present = true;
  icon.Apply(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(icon.Stands());
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify, Add}));
}

TEST_F(TrayIconTest, ComesBackOnANewTaskBarEvenIfItIsStillThere) {
  icon.Apply(Add);
  shell.hasIcon = false;
  icon.Restore();
  EXPECT_TRUE(shell.hasIcon);
  icon.Restore();
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify}));
}

TEST_F(TrayIconTest, StaysAwayAfterItWasRemoved) {
  icon.Restore();
  EXPECT_EQ(shell.told, Told{});
  icon.Apply(Add);
  icon.Apply(Delete);
  icon.Restore();
  icon.Apply(Modify);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Modify}));
}

TEST_F(TrayIconTest, StaysAwayIfItIsRemovedDuringTheShellsCall) {
  icon.Apply(Add);
  shell.removedMeanwhile = &icon;
  icon.Apply(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}
