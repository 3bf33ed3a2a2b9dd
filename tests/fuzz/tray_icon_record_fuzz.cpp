// Any 88 bytes of the shell's record with any code page, and any tip.
// Input: first character and step of the code page (16 bits each), the 88 bytes, length (8 bits) and characters (16
// bits each) of a tip, pairs of bytes whose characters are swapped.

#include <string>

#include "fuzz/record_codec.h"
#include "tray/tray_icon_data.h"

using namespace fuzzing;
using tidewell::TrayIconBytes;
using tidewell::TrayIconRecord;

namespace {

void RequireTipSet(TrayIconRecord record, const std::wstring& tip, const runtime::CodePage& page) {
  record.SetTip(tip);
  for (std::size_t i = 0; i < record.szTip.size(); ++i) {
    Require(record.szTip.at(i) == (i < tip.size() ? tip.at(i) : L' '), "a tip is padded with spaces or cut");
  }
  TrayIconRecord back = tidewell::Unpack(tidewell::Pack(record, page), page);
  for (std::size_t i = 0; i < record.szTip.size(); ++i) {
    RequireTextCarried(record.szTip.at(i), back.szTip.at(i), page);
  }
  back.szTip = record.szTip;
  Require(back == record, "the numbers of a record are carried");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  runtime::CodePage page = TakeCodePage(input);
  const auto packed = TakeBytes<TrayIconBytes>(input);
  std::wstring tip(input.Take<std::uint8_t>(), L'\0');
  TakeCharacters(tip, input);
  Shuffle(page, input);

  const TrayIconRecord record = tidewell::Unpack(packed, page);
  Require(tidewell::Pack(record, page) == packed, "a record that is read and written stays the same to the bit");
  RequireTipSet(record, tip, page);
  return 0;
}
