#include "report/settings.h"

#include "forms/packed_record.h"

namespace mMoon {

SettingsRecord Settings;

namespace {

/// Calls visit with each field in the order of the file.
template <class Record, class Visitor>
void VisitFields(Record& record, Visitor visit) {
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
  for (auto& field : record.Reserved13To20) {
    visit(field);
  }
  visit(record.RestoreInTray);
  visit(record.AutoStart);
  visit(record.SouthernView);
  visit(record.Reserved24);
}

}  // namespace

SettingsBytes Pack(const SettingsRecord& record, const forms::CodePage& codePage) {
  SettingsBytes bytes{};
  VisitFields(record, forms::FieldPacker(bytes, codePage));
  return bytes;
}

SettingsRecord Unpack(const SettingsBytes& bytes, const forms::CodePage& codePage) {
  SettingsRecord record;
  VisitFields(record, forms::FieldUnpacker(bytes, codePage));
  return record;
}

}  // namespace mMoon
