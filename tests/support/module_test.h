#pragma once

#include <gtest/gtest.h>

namespace support {

/// Puts the module variables back to what they are when the program starts.
void ResetModule();

/// A test that begins with the module variables of a program that has just started.
class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() { ResetModule(); }
};

}  // namespace support
