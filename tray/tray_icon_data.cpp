#include "tray/tray_icon_data.h"

#include <algorithm>

namespace mMoon {

TrayIconRecord TrayIconData;

void TrayIconRecord::SetTip(std::wstring_view text) {
  szTip.fill(L' ');
  std::copy_n(text.begin(), std::min(text.size(), szTip.size()), szTip.begin());
}

}  // namespace mMoon
