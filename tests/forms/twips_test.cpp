#include "forms/twips.h"

#include <gtest/gtest.h>

#include "support/raises.h"

using runtime::ErrorNumber;
using support::Raises;

namespace forms {

TEST(ToPixels, DividesTwipsAndRounds) {
  EXPECT_EQ(ToPixels(22, 15), 1);
  EXPECT_EQ(ToPixels(23, 15), 2);
  EXPECT_EQ(ToPixels(-22, 15), -1);
  EXPECT_EQ(ToPixels(-23, 15), -2);
  // A half goes to the even pixel.
  EXPECT_EQ(ToPixels(22.5, 15), 2);
  EXPECT_EQ(ToPixels(37.5, 15), 2);
}

TEST(ToPixels, TakesPixelsAsTheyAre) {
  EXPECT_EQ(ToPixels(514, 15, ScaleMode::Pixels), 514);
  EXPECT_EQ(ToPixels(517.4, 0, ScaleMode::Pixels), 517);
}

TEST(ToPixels, RaisesTheErrorsOfItsDivision) {
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { (void)ToPixels(514, 0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)ToPixels(1e12, 15); }));
}

}  // namespace forms
