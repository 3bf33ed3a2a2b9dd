#pragma once

#include <gtest/gtest.h>

namespace support {

/// Puts the variables of the program, as its headers define them, back to what they are when it starts.
void ResetModule();

/// A test that begins with the module variables of a program that has just started.
class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() { ResetModule(); }
};

}  // namespace support
