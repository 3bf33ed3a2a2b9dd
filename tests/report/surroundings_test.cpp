#include "report/surroundings.h"

#include <gtest/gtest.h>

#include "support/raises.h"

using runtime::ErrorNumber;
using support::Raises;

namespace tidewell {

TEST(Surroundings, RefuseAFormOrAClockThatWasNotSet) {
  const Surroundings nothing;
  EXPECT_TRUE(Raises(ErrorNumber::InternalError, [&] { static_cast<void>(nothing.Form()); }));
  EXPECT_TRUE(Raises(ErrorNumber::InternalError, [&] { nothing.Now(); }));
}

}  // namespace tidewell
