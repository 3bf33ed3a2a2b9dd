#include "runtime/code_page.h"

#include <algorithm>

namespace runtime {

std::byte CodePage::Encode(wchar_t character) const noexcept {
  const auto* const found = std::find(characters.begin(), characters.end(), character);
  return found == characters.end() ? std::byte{'?'} : static_cast<std::byte>(found - characters.begin());
}

}  // namespace runtime
