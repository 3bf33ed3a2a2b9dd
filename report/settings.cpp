#include "report/settings.h"

#include "runtime/packed_record.h"

namespace tidewell {

namespace {

/// Calls visit with each field in the order of the file.
template <class Record, class Visitor>
constexpr void VisitFields(Record& record, Visitor visit) {
  auto& [Reserved1, Reserved2, Reserved3, Reserved4, Reserved5, Reserved6, Reserved7, Reserved8, Reserved9, Reserved10,
         Reserved11, Reserved12, Reserved13To20, RestoreInTray, AutoStart, SouthernView, Reserved24] = record;
  visit(Reserved1);
  visit(Reserved2);
  visit(Reserved3);
  visit(Reserved4);
  visit(Reserved5);
  visit(Reserved6);
  visit(Reserved7);
  visit(Reserved8);
  visit(Reserved9);
  visit(Reserved10);
  visit(Reserved11);
  visit(Reserved12);
  for (auto& field : Reserved13To20) {
    visit(field);
  }
  visit(RestoreInTray);
  visit(AutoStart);
  visit(SouthernView);
  visit(Reserved24);
}

constexpr std::size_t VisitedSize() {
  std::size_t size = 0;
  const SettingsRecord record;
  VisitFields(record, runtime::FieldCounter(size));
  return size;
}
static_assert(VisitedSize() == kSettingsRecordSize);

}  // namespace

SettingsBytes Pack(const SettingsRecord& record, const runtime::CodePage& codePage) {
  SettingsBytes bytes{};
  VisitFields(record, runtime::FieldPacker(bytes, codePage));
  return bytes;
}

SettingsRecord Unpack(const SettingsBytes& bytes, const runtime::CodePage& codePage) {
  SettingsRecord record;
  VisitFields(record, runtime::FieldUnpacker(bytes, codePage));
  return record;
}

}  // namespace tidewell
