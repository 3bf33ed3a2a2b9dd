#pragma once

#include <gtest/gtest.h>

namespace support {

/// Resets the variables in the program's headers to their values at its start.
void ResetModule();

/// A test that begins with the variables as at the program's start.
class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() { ResetModule(); }
};

}  // namespace support
