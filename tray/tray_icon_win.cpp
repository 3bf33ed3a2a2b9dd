#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include <cstddef>
#include <cstring>

#include "runtime/code_page.h"
#include "tray/tray_icon.h"
#include "tray/tray_icon_data.h"

namespace tidewell {

static_assert(static_cast<DWORD>(TrayCommand::Add) == NIM_ADD &&
              static_cast<DWORD>(TrayCommand::Modify) == NIM_MODIFY &&
              static_cast<DWORD>(TrayCommand::Delete) == NIM_DELETE);

bool NotifyShell(TrayCommand command) noexcept {
  const runtime::CodePage& codePage = runtime::SystemCodePage();
  // The shell knows the first, 88-byte form of its record by the size in it.
  NOTIFYICONDATAA shellRecord{};
  static_assert(NOTIFYICONDATAA_V1_SIZE == kTrayIconRecordSize && offsetof(NOTIFYICONDATAA, szTip) == 24);
  TrayIconBytes bytes = Pack(mMoon::TrayIconData, codePage);
  std::memcpy(&shellRecord, bytes.data(), bytes.size());
  const BOOL done = Shell_NotifyIconA(static_cast<DWORD>(command), &shellRecord);
  // A message that the shell sent meanwhile may have updated the record: then this one is a minute old at most.
  std::memcpy(bytes.data(), &shellRecord, bytes.size());
  mMoon::TrayIconData = Unpack(bytes, codePage);
  return done != FALSE;
}

}  // namespace tidewell
