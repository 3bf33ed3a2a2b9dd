// The options: the settings file after a click, and hiding.

#include <fstream>
#include <iterator>

#include "report/settings.h"
#include "runtime/code_page.h"
#include "support/other_windows_win.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/tray.h"

namespace check {

namespace {

constexpr std::size_t kRecordStart = 16 * 512;  // the 17th record

/// The file after a first run: zeros, then the record.
std::string WantedFile(const tidewell::SettingsRecord& record) {
  const tidewell::SettingsBytes bytes = Pack(record, runtime::SystemCodePage());
  return std::string(kRecordStart, '\0') + std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string File(const Stage& stage) {
  std::ifstream file(stage.SettingsFile(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WantFile(Facts& facts, const std::wstring& when, const std::string& wanted, const std::string& got) {
  facts.Want(L"bytes in vesk.dat " + when, static_cast<long long>(wanted.size()), static_cast<long long>(got.size()));
  const auto different = std::mismatch(wanted.begin(), wanted.end(), got.begin(), got.end()).first - wanted.begin();
  facts.Want(L"first byte that differs " + when, static_cast<long long>(wanted.size()), different);
}

/// Clicks an option twice. After each click the file must hold it and nothing else.
Outcome ClickTwice(const Stage& stage, int index, runtime::Boolean tidewell::SettingsRecord::*option) {
  const Program program(stage);
  Facts facts;
  facts.Want(L"bytes in vesk.dat at the start", 0, static_cast<long long>(File(stage).size()));
  tidewell::SettingsRecord record;
  for (const runtime::Boolean value : {runtime::True, runtime::False}) {
    Sleep(GetDoubleClickTime());
    ClickOn(program.Option(index), true);
    Until(L"the option's tick changed",
          [&] { return support::Ask(program.Option(index), BM_GETCHECK) == tidewell::StateFromOption(value); });
    support::Ask(program.Main(), WM_NULL);  // waits until the click is handled
    record.*option = value;
    WantFile(facts, value == runtime::True ? L"ticked" : L"not ticked", WantedFile(record), File(stage));
  }
  return facts.Result();
}

Outcome Restore(const Stage& stage) { return ClickTwice(stage, 0, &tidewell::SettingsRecord::RestoreInTray); }

Outcome Southern(const Stage& stage) { return ClickTwice(stage, 2, &tidewell::SettingsRecord::SouthernView); }

/// This option is disabled: a click changes nothing.
Outcome AutoStart(const Stage& stage) {
  const Program program(stage);
  ClickOn(program.Option(1), true);
  Sleep(500);
  Facts facts;
  facts.Want(L"ticked", 0, support::Ask(program.Option(1), BM_GETCHECK).value_or(-1));
  facts.Want(L"bytes in vesk.dat", 0, static_cast<long long>(File(stage).size()));
  return facts.Result();
}

Outcome Hiding(const Program& program) {
  ClickOn(program.Option(0), true);
  Until(L"the option's tick", [&] { return support::Ask(program.Option(0), BM_GETCHECK) == 1; });
  ClickOn(program.CloseButton());
  program.WaitUntilShown(false);
  Facts facts;
  facts.Want(L"ended", 0, program.TheProcess().Ended());
  facts.Want(L"the icon stands", 1, IconStands(program.About()));
  SendIconMessage(program, WM_LBUTTONUP);
  program.WaitUntilShown(true);
  return facts.Result();
}

}  // namespace

std::vector<Check> OptionChecks() {
  return {
      {L"option Restore in System Tray", Restore},
      {L"option Automatically Start at Start-up", AutoStart},
      {L"option Enable Southern Hemisphere View", Southern},
      {L"hiding by the option", Hiding},
  };
}

}  // namespace check
