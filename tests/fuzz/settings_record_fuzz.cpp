// Any settings file with any code page, and any record.
// Input: the code page's first character and step (16 bits each), the file's 274 bytes, 212 characters (16 bits each),
// pairs of bytes whose characters are swapped.

#include <algorithm>
#include <utility>

#include "fuzz/fuzzing.h"
#include "report/settings.h"
#include "runtime/code_page.h"

using namespace fuzzing;
using runtime::CodePage;
using tidewell::SettingsBytes;
using tidewell::SettingsRecord;

namespace {

/// A code page in which no two bytes share a character, because the step is odd.
CodePage TakeCodePage(Input& input) {
  const auto first = input.Take<std::uint16_t>();
  const auto step = static_cast<std::uint16_t>(input.Take<std::uint16_t>() | 1U);
  CodePage page{};
  for (unsigned byte = 0; byte < page.characters.size(); ++byte) {
    page.characters.at(byte) = static_cast<wchar_t>(static_cast<std::uint16_t>(first + byte * step));
  }
  return page;
}

/// Swaps the characters of pairs of bytes while there is input. This reaches any order of the characters.
void Shuffle(CodePage& page, Input& input) {
  while (!input.Empty()) {
    const auto one = input.Take<std::uint8_t>();
    const auto other = input.Take<std::uint8_t>();
    std::swap(page.characters.at(one), page.characters.at(other));
  }
}

/// Each character comes back, or becomes the question mark's byte if the page lacks it.
template <class Text>
void RequireTextCarried(const Text& before, const Text& after, const CodePage& page) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (after.at(i) != before.at(i)) {
      Require(after.at(i) == page.Decode(std::byte{'?'}), "a character that changed became byte 3F");
      Require(std::ranges::find(page.characters, before.at(i)) == page.characters.end(),
              "a character of the page comes back");
    }
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  CodePage page = TakeCodePage(input);
  SettingsBytes file{};
  std::ranges::generate(file, [&] { return input.Take<std::byte>(); });
  SettingsRecord foreign = tidewell::Unpack(file, page);
  const auto character = [&] { return static_cast<wchar_t>(input.Take<std::uint16_t>()); };
  std::ranges::generate(foreign.Reserved2, character);
  std::ranges::generate(foreign.Reserved3, character);
  Shuffle(page, input);

  SettingsRecord record = tidewell::Unpack(file, page);
  Require(tidewell::Pack(record, page) == file, "reading and writing keep every bit of the file");

  SettingsRecord back = tidewell::Unpack(tidewell::Pack(foreign, page), page);
  RequireTextCarried(foreign.Reserved2, back.Reserved2, page);
  RequireTextCarried(foreign.Reserved3, back.Reserved3, page);
  back.Reserved2 = foreign.Reserved2;
  back.Reserved3 = foreign.Reserved3;
  Require(back == foreign, "the numbers of a record come back");

  record.SouthernView = tidewell::OptionFromState(tidewell::StateFromOption(record.SouthernView));
  Require(record.SouthernView == runtime::True || record.SouthernView == runtime::False, "an option is True or False");
  return 0;
}
