// The options: the settings file after a click, and hiding.

#include <algorithm>
#include <fstream>
#include <iterator>

#include "report/settings.h"
#include "runtime/code_page.h"
#include "windows_check/program.h"

namespace check {

namespace {

constexpr std::size_t kRecordStart = 16 * 512;  // the 17th record

/// The file after a first run: zeros, then the record.
std::string WantedFile(const tidewell::SettingsRecord& record) {
  const tidewell::SettingsBytes bytes = Pack(record, runtime::SystemCodePage());
  return std::string(kRecordStart, '\0') + std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string File() {
  std::ifstream file(SettingsFile(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Clicks an option twice. After each click the file must hold it and nothing else.
void ClickTwice(int index, runtime::Boolean tidewell::SettingsRecord::*option) {
  const Program program;
  EXPECT_EQ(File(), "");
  tidewell::SettingsRecord record;
  for (const runtime::Boolean value : {runtime::True, runtime::False}) {
    Sleep(GetDoubleClickTime());
    ClickOn(program.Option(index), true);
    Until(L"the option's tick changed",
          [&] { return support::Ask(program.Option(index), BM_GETCHECK) == tidewell::StateFromOption(value); });
    support::Ask(program.Main(), WM_NULL);  // waits until the click is handled
    record.*option = value;
    const std::string wanted = WantedFile(record), got = File();
    EXPECT_EQ(wanted.size(), got.size());
    EXPECT_EQ(std::ranges::mismatch(wanted, got).in1 - wanted.begin(), std::ssize(wanted)) << "bytes are right";
  }
}

TEST(Option, RestoreInSystemTrayIsStored) { ClickTwice(0, &tidewell::SettingsRecord::RestoreInTray); }

TEST(Option, SouthernViewIsStored) { ClickTwice(2, &tidewell::SettingsRecord::SouthernView); }

/// This option is disabled: a click changes nothing.
TEST(Option, AutomaticStartIsDisabled) {
  const Program program;
  ClickOn(program.Option(1), true);
  Sleep(500);
  EXPECT_EQ(support::Ask(program.Option(1), BM_GETCHECK), BST_UNCHECKED);
  EXPECT_EQ(File(), "");
}

TEST(Option, RestoreInSystemTrayHidesTheWindow) {
  const Program program;
  ClickOn(program.Option(0), true);
  Until(L"the option's tick", [&] { return support::Ask(program.Option(0), BM_GETCHECK) == BST_CHECKED; });
  ClickOn(program.CloseButton());
  program.WaitUntilShown(false);
  EXPECT_FALSE(program.Ended());
  EXPECT_TRUE(program.IconStands());
  program.SendIconMessage(WM_LBUTTONUP);
  program.WaitUntilShown(true);
}

}  // namespace

}  // namespace check
