#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include <cstddef>
#include <cstring>

#include "runtime/code_page.h"
#include "tray/shell_notifier.h"
#include "tray/shell_record.h"

namespace tidewell {

static_assert(static_cast<DWORD>(TrayCommand::Add) == NIM_ADD &&
              static_cast<DWORD>(TrayCommand::Modify) == NIM_MODIFY &&
              static_cast<DWORD>(TrayCommand::Delete) == NIM_DELETE);

bool NotifyShell(TrayCommand command) noexcept {
  const runtime::CodePage& codePage = runtime::SystemCodePage();
  // cbSize tells the shell that this is the 88-byte form of its record.
  NOTIFYICONDATAA systemRecord{};
  static_assert(NOTIFYICONDATAA_V1_SIZE == kShellRecordSize && offsetof(NOTIFYICONDATAA, szTip) == 24);
  ShellBytes bytes = Pack(mMoon::TrayIconData, codePage);
  std::memcpy(&systemRecord, bytes.data(), bytes.size());
  const BOOL done = Shell_NotifyIconA(static_cast<DWORD>(command), &systemRecord);
  // If the shell sent a message meanwhile, its handler may have updated the record. This puts the older one back, until
  // the next update.
  std::memcpy(bytes.data(), &systemRecord, bytes.size());
  mMoon::TrayIconData = Unpack(bytes, codePage);
  return done != FALSE;
}

}  // namespace tidewell
