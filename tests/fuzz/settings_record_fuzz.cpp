// Any settings file with any code page, and any record.
// Input: first character and step of the code page (16 bits each), the 274 bytes of the file, 212 characters (16 bits
// each), pairs of bytes whose characters are swapped.

#include "fuzz/record_codec.h"
#include "report/settings.h"

using namespace fuzzing;
using tidewell::SettingsBytes;
using tidewell::SettingsRecord;

namespace {

void RequireCarried(const SettingsRecord& record, const runtime::CodePage& page) {
  SettingsRecord back = tidewell::Unpack(tidewell::Pack(record, page), page);
  for (std::size_t i = 0; i < record.Reserved2.size(); ++i) {
    RequireTextCarried(record.Reserved2.at(i), back.Reserved2.at(i), page);
  }
  for (std::size_t i = 0; i < record.Reserved3.size(); ++i) {
    RequireTextCarried(record.Reserved3.at(i), back.Reserved3.at(i), page);
  }
  back.Reserved2 = record.Reserved2;
  back.Reserved3 = record.Reserved3;
  Require(back == record, "the numbers of a record are carried");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  runtime::CodePage page = TakeCodePage(input);
  const auto file = TakeBytes<SettingsBytes>(input);
  SettingsRecord foreign = tidewell::Unpack(file, page);
  TakeCharacters(foreign.Reserved2, input);
  TakeCharacters(foreign.Reserved3, input);
  Shuffle(page, input);

  SettingsRecord record = tidewell::Unpack(file, page);
  Require(tidewell::Pack(record, page) == file, "a file that is read and written stays the same to the bit");
  RequireCarried(foreign, page);

  record.SouthernView = tidewell::OptionFromState(tidewell::StateFromOption(record.SouthernView));
  Require(record.SouthernView == runtime::True || record.SouthernView == runtime::False, "an option is True or False");
  return 0;
}
