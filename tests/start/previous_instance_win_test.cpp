#include "start/previous_instance_win.h"

#include <gtest/gtest.h>

#include "support/system_stand_in_win.h"

extern "C" decltype(&CreateMutexW) createMutexSlot asm("__imp__CreateMutexW@12");

namespace {

using tidewell::PreviousInstanceTest;

/// Another user at the same computer may run a copy.
TEST(PreviousInstance, CountsInTheUsersSessionAlone) {
  const runtime::unique_mutex everywhere(CreateMutexW(nullptr, FALSE, L"Global\\" TIDEWELL_NAME " is running"));
  ASSERT_NE(everywhere, nullptr);
  EXPECT_FALSE(PreviousInstanceTest().AnotherIsRunning());
}

HANDLE WINAPI Deny(SECURITY_ATTRIBUTES* /*security*/, BOOL /*owned*/, LPCWSTR /*name*/) {
  SetLastError(ERROR_ACCESS_DENIED);
  return nullptr;
}

TEST(PreviousInstance, CountsIfItRunsElevated) {
  const SystemStandIn standIn(createMutexSlot, &Deny);
  EXPECT_TRUE(PreviousInstanceTest().AnotherIsRunning());
}

}  // namespace
