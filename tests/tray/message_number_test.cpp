#include "tray/message_number.h"

#include <gtest/gtest.h>

#include "support/raises.h"

using support::Raises;

namespace tidewell {

using namespace mMoon;
using namespace runtime;

TEST(DecodeTrayMessage, DividesTwipsByTwipsPerPixelAndRounds) {
  EXPECT_EQ(DecodeTrayMessage(514 * 15, ScaleMode::Twips, 15), kLeftButtonUp);
  EXPECT_EQ(DecodeTrayMessage(517 * 12, ScaleMode::Twips, 12), kRightButtonUp);
  EXPECT_EQ(DecodeTrayMessage(514 * 15 - 7, ScaleMode::Twips, 15), 514);
  EXPECT_EQ(DecodeTrayMessage(514 * 15 + 7, ScaleMode::Twips, 15), 514);
}

TEST(DecodeTrayMessage, TakesPixelsAsTheyAre) {
  EXPECT_EQ(DecodeTrayMessage(514, ScaleMode::Pixels, 15), 514);
  EXPECT_EQ(DecodeTrayMessage(517.4, ScaleMode::Pixels, 0), 517);
}

TEST(DecodeTrayMessage, RaisesTheErrorsOfItsDivision) {
  EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [] { DecodeTrayMessage(514, ScaleMode::Twips, 0); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { DecodeTrayMessage(1e12, ScaleMode::Twips, 15); }));
}

TEST(MayBeTrayMessage, TakesAMoveInTheTopRowAlone) {
  EXPECT_TRUE(MayBeTrayMessage(0));
  EXPECT_FALSE(MayBeTrayMessage(15));
  EXPECT_FALSE(MayBeTrayMessage(-15));
}

}  // namespace tidewell
