#include "tray/tray_icon_data.h"

#include <algorithm>

#include "runtime/packed_record.h"

namespace tidewell {

namespace {

/// Calls visit with each field in the shell's order.
template <class Record, class Visitor>
constexpr void VisitFields(Record& record, Visitor visit) {
  auto& [cbSize, hWnd, uID, uFlags, uCallbackMessage, hIcon, szTip] = record;
  visit(cbSize);
  visit(hWnd);
  visit(uID);
  visit(uFlags);
  visit(uCallbackMessage);
  visit(hIcon);
  visit(szTip);
}

constexpr std::size_t VisitedSize() {
  std::size_t size = 0;
  const TrayIconRecord record;
  VisitFields(record, runtime::FieldCounter(size));
  return size;
}
static_assert(VisitedSize() == kTrayIconRecordSize);

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
