#include "report/settings.h"

#include "runtime/packed_record.h"

namespace tidewell {

/// Calls visit with each field in the order of the file.
template <class Record, class Visitor>
static constexpr void VisitFields(Record& record, Visitor&& visit) {
  visit(record.Reserved1);
  visit(record.Reserved2);
  visit(record.Reserved3);
  visit(record.Reserved4);
  visit(record.Reserved5);
  visit(record.Reserved6);
  visit(record.Reserved7);
  visit(record.Reserved8);
  visit(record.Reserved9);
  visit(record.Reserved10);
  visit(record.Reserved11);
  visit(record.Reserved12);
  visit(record.Reserved13To20);
  visit(record.RestoreInTray);
  visit(record.AutoStart);
  visit(record.SouthernView);
  visit(record.Reserved24);
}

static_assert(runtime::FieldsFill<SettingsRecord, kSettingsRecordSize>());

SettingsBytes Pack(const SettingsRecord& record, const runtime::CodePage& codePage) {
  return runtime::PackFields<kSettingsRecordSize>(record, codePage);
}

SettingsRecord Unpack(const SettingsBytes& bytes, const runtime::CodePage& codePage) {
  return runtime::UnpackFields<SettingsRecord>(bytes, codePage);
}

}  // namespace tidewell
