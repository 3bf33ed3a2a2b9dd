#include "forms/high_contrast_win.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/high_contrast_stand_in_win.h"

namespace {

bool DarkIn(bool contrast, COLORREF face) {
  const HighContrastStandIn standIn(contrast, face, 0);
  return forms::DarkHighContrast();
}

TEST(DarkHighContrast, NeedsADarkBackground) {
  for (const COLORREF dark :
       {RGB(0, 0, 0), RGB(32, 32, 32), RGB(45, 50, 54), RGB(0, 0x20, 0xFF), RGB(0x58, 0x58, 0x58)}) {
    EXPECT_TRUE(DarkIn(true, dark)) << std::hex << dark;
  }
  for (const COLORREF light : {RGB(0xFF, 0x20, 0), RGB(0x59, 0x59, 0x59), RGB(255, 250, 239), RGB(255, 255, 255)}) {
    EXPECT_FALSE(DarkIn(true, light)) << std::hex << light;
  }
  EXPECT_FALSE(DarkIn(false, RGB(0, 0, 0)));
}

}  // namespace
