#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include <cstring>

#include "forms/code_page.h"
#include "tray/tray_icon.h"
#include "tray/tray_icon_data.h"

namespace mMoon {

bool NotifyShell(TrayCommand command) noexcept {
  const forms::CodePage& codePage = forms::SystemCodePage();
  // The shell takes the first, 88-byte form of its record by the size in it.
  NOTIFYICONDATAA shellRecord{};
  static_assert(sizeof shellRecord >= kTrayIconRecordSize);
  TrayIconBytes bytes = Pack(TrayIconData, codePage);
  std::memcpy(&shellRecord, bytes.data(), bytes.size());
  const BOOL done = Shell_NotifyIconA(static_cast<DWORD>(command), &shellRecord);
  std::memcpy(bytes.data(), &shellRecord, bytes.size());
  TrayIconData = Unpack(bytes, codePage);
  return done != FALSE;
}

}  // namespace mMoon
