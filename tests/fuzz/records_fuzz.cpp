// The records that leave the program: any bytes, with any code page, come back as they were.

#include <algorithm>
#include <numeric>
#include <utility>

#include "forms/code_page.h"
#include "fuzz/fuzz_input.h"
#include "report/settings.h"
#include "tray/tray_icon_data.h"

namespace {

/// A code page of distinct characters, shuffled by the input.
forms::CodePage AnyCodePage(FuzzInput& input) {
  forms::CodePage page{};
  std::iota(page.characters.begin(), page.characters.end(), static_cast<wchar_t>(input.Between(0, 0xFF00)));
  for (int i = input.Between(0, 20); i > 0; --i) {
    std::swap(page.characters.at(static_cast<std::size_t>(input.Between(0, 255))),
              page.characters.at(static_cast<std::size_t>(input.Between(0, 255))));
  }
  return page;
}

template <class Bytes>
Bytes AnyBytes(FuzzInput& input) {
  Bytes bytes{};
  const auto from = input.Bytes(bytes.size());
  std::transform(from.begin(), from.end(), bytes.begin(), [](std::uint8_t byte) { return std::byte{byte}; });
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const forms::CodePage page = AnyCodePage(input);

  const auto settings = AnyBytes<mMoon::SettingsBytes>(input);
  const mMoon::SettingsRecord record = mMoon::Unpack(settings, page);
  Require(mMoon::Pack(record, page) == settings, "settings come back to the bit");
  Require(mMoon::Unpack(mMoon::Pack(record, page), page) == record, "and once more");

  const auto icon = AnyBytes<mMoon::TrayIconBytes>(input);
  Require(mMoon::Pack(mMoon::Unpack(icon, page), page) == icon, "the icon's record comes back to the bit");
  return 0;
}
