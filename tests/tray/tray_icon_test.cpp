#include "tray/tray_icon.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using tidewell::TrayCommand;
using enum tidewell::TrayCommand;

/// Stands in for the shell: has the icon or not, and refuses what the real one refuses.
struct Shell {
  bool present = true;
  bool hasIcon = false;
  int busy = 0;  ///< calls that it lets fail
  std::vector<TrayCommand> told;
  tidewell::TrayIcon* removedMeanwhile = nullptr;
};
Shell shell;

}  // namespace

bool tidewell::NotifyShell(TrayCommand command) noexcept {
  shell.told.push_back(command);
  if (shell.removedMeanwhile != nullptr) {
    std::exchange(shell.removedMeanwhile, nullptr)->Carry(Delete);
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

TEST_F(TrayIconTest, IsAddedChangedAndRemoved) {
  icon.Carry(Add);
  icon.Carry(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(icon.Wanted());
  icon.Carry(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(icon.Wanted());
  EXPECT_FALSE(icon.Stands());
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}

TEST_F(TrayIconTest, IsRemovedOnlyWhereItWasAdded) {
  icon.Carry(Delete);
  EXPECT_EQ(shell.told, Told{});
  icon.Carry(Add);
  icon.Carry(Delete);
  icon.Carry(Delete);
  EXPECT_EQ(shell.told, (Told{Add, Delete}));
}

TEST_F(TrayIconTest, IsRemovedAtTheSecondTryFromAShellThatIsBusy) {
  icon.Carry(Add);
  shell.busy = 1;
  icon.Carry(Delete);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Delete}));
}

TEST_F(TrayIconTest, ComesWithAShellThatIsLate) {
  shell.present = false;
  icon.Carry(Add);
  icon.Carry(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_FALSE(icon.Stands());
  shell.present = true;
  icon.Carry(Modify);
  EXPECT_TRUE(shell.hasIcon);
  EXPECT_TRUE(icon.Stands());
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify, Add}));
}

TEST_F(TrayIconTest, ComesBackWithANewTaskBarAlsoWhereItIsStillThere) {
  icon.Carry(Add);
  shell.hasIcon = false;
  icon.Restore();
  EXPECT_TRUE(shell.hasIcon);
  icon.Restore();
  EXPECT_EQ(shell.told, (Told{Add, Modify, Add, Modify}));
}

TEST_F(TrayIconTest, StaysAwayOnceItWasRemoved) {
  icon.Restore();
  EXPECT_EQ(shell.told, Told{});
  icon.Carry(Add);
  icon.Carry(Delete);
  icon.Restore();
  icon.Carry(Modify);
  EXPECT_EQ(shell.told, (Told{Add, Delete, Modify}));
}

TEST_F(TrayIconTest, StaysAwayWhereTheShellsCallRemovedIt) {
  icon.Carry(Add);
  shell.removedMeanwhile = &icon;
  icon.Carry(Modify);
  EXPECT_FALSE(shell.hasIcon);
  EXPECT_EQ(shell.told, (Told{Add, Modify, Delete}));
}
