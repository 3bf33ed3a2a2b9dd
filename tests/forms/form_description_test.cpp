#include "forms/form_description.h"

#include <gtest/gtest.h>

namespace forms {

TEST(Twips, BecomeTheNearestPixel) {
  EXPECT_EQ(ToPixels(22, 15), 1);
  EXPECT_EQ(ToPixels(23, 15), 2);
  EXPECT_EQ(ToPixels(-22, 15), -1);
  EXPECT_EQ(ToPixels(-23, 15), -2);
  // A half goes to the even pixel.
  EXPECT_EQ(ToPixels(22.5, 15), 2);
  EXPECT_EQ(ToPixels(37.5, 15), 2);
}

}  // namespace forms
