#include "tray/tray_icon_data.h"

#include <algorithm>

#include "runtime/packed_record.h"

namespace tidewell {

namespace {

/// Calls visit with each field in the shell's order.
template <class Record, class Visitor>
constexpr void VisitFields(Record& record, Visitor&& visit) {
  visit(record.cbSize);
  visit(record.hWnd);
  visit(record.uID);
  visit(record.uFlags);
  visit(record.uCallbackMessage);
  visit(record.hIcon);
  visit(record.szTip);
}

constexpr runtime::FieldCounter Visited() {
  runtime::FieldCounter counter;
  const TrayIconRecord record;
  VisitFields(record, counter);
  return counter;
}
static_assert(Visited().fields == runtime::FieldCount<TrayIconRecord>() && Visited().bytes == kTrayIconRecordSize);

}  // namespace

void TrayIconRecord::SetTip(std::wstring_view text) {
  szTip.fill(L' ');
  std::copy_n(text.begin(), std::min(text.size(), szTip.size()), szTip.begin());
}

TrayIconBytes Pack(const TrayIconRecord& record, const runtime::CodePage& codePage) {
  TrayIconBytes bytes{};
  VisitFields(record, runtime::FieldPacker(bytes, codePage));
  return bytes;
}

TrayIconRecord Unpack(const TrayIconBytes& bytes, const runtime::CodePage& codePage) {
  TrayIconRecord record;
  VisitFields(record, runtime::FieldUnpacker(bytes, codePage));
  return record;
}

}  // namespace tidewell
