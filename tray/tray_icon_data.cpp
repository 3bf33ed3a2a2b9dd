#include "tray/tray_icon_data.h"

#include <algorithm>

#include "forms/packed_record.h"

namespace mMoon {

TrayIconRecord TrayIconData;

namespace {

/// Calls visit with each field in the shell's order.
template <class Record, class Visitor>
void VisitFields(Record& record, Visitor visit) {
  visit(record.cbSize);
  visit(record.hWnd);
  visit(record.uID);
  visit(record.uFlags);
  visit(record.uCallbackMessage);
  visit(record.hIcon);
  visit(record.szTip);
}

}  // namespace

void TrayIconRecord::SetTip(std::wstring_view text) {
  szTip.fill(L' ');
  std::copy_n(text.begin(), std::min(text.size(), szTip.size()), szTip.begin());
}

TrayIconBytes Pack(const TrayIconRecord& record, const forms::CodePage& codePage) {
  TrayIconBytes bytes{};
  VisitFields(record, forms::FieldPacker(bytes, codePage));
  return bytes;
}

TrayIconRecord Unpack(const TrayIconBytes& bytes, const forms::CodePage& codePage) {
  TrayIconRecord record;
  VisitFields(record, forms::FieldUnpacker(bytes, codePage));
  return record;
}

}  // namespace mMoon
