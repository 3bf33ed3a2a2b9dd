#include "tray/shell_record.h"

#include <algorithm>

#include "runtime/packed_record.h"

namespace tidewell {

/// Calls visit with each field in the shell's order.
template <class Record, class Visitor>
static constexpr void VisitFields(Record& record, Visitor&& visit) {
  visit(record.cbSize);
  visit(record.hWnd);
  visit(record.uID);
  visit(record.uFlags);
  visit(record.uCallbackMessage);
  visit(record.hIcon);
  visit(record.szTip);
}

static_assert(runtime::FieldsFill<ShellRecord, kShellRecordSize>());

void ShellRecord::SetTip(std::wstring_view text) {
  szTip.fill(L' ');
  std::copy_n(text.begin(), std::min(text.size(), szTip.size()), szTip.begin());
}

ShellBytes Pack(const ShellRecord& record, const runtime::CodePage& codePage) {
  return runtime::PackFields<kShellRecordSize>(record, codePage);
}

ShellRecord Unpack(const ShellBytes& bytes, const runtime::CodePage& codePage) {
  return runtime::UnpackFields<ShellRecord>(bytes, codePage);
}

}  // namespace tidewell
