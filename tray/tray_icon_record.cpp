#include "tray/tray_icon_record.h"

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

static_assert(runtime::FieldsFill<TrayIconRecord, kTrayIconRecordSize>());

void TrayIconRecord::SetTip(std::wstring_view text) {
  szTip.fill(L' ');
  std::copy_n(text.begin(), std::min(text.size(), szTip.size()), szTip.begin());
}

TrayIconBytes Pack(const TrayIconRecord& record, const runtime::CodePage& codePage) {
  return runtime::PackFields<kTrayIconRecordSize>(record, codePage);
}

TrayIconRecord Unpack(const TrayIconBytes& bytes, const runtime::CodePage& codePage) {
  return runtime::UnpackFields<TrayIconRecord>(bytes, codePage);
}

}  // namespace tidewell
