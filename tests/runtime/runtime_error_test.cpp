#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace runtime {

TEST(RuntimeError, HasTheNumbersAndTextsThatTheUserKnows) {
  const std::vector<std::pair<int, std::string>> errors = {
      {5, "Invalid procedure call or argument"},
      {6, "Overflow"},
      {7, "Out of memory"},
      {11, "Division by zero"},
      {13, "Type mismatch"},
      {51, "Internal error"},
      {52, "Bad file name or number"},
      {53, "File not found"},
      {57, "Device I/O error"},
      {61, "Disk full"},
      {70, "Permission denied"},
      {75, "Path/File access error"},
      {76, "Path not found"},
      {340, "Control array element doesn't exist"},
  };
  for (const auto& [number, text] : errors) {
    const RuntimeError error(static_cast<ErrorNumber>(number));
    EXPECT_EQ(static_cast<int>(error.number()), number);
    EXPECT_EQ(error.what(), text);
  }
  // Unknown numbers have the same text.
  EXPECT_EQ(static_cast<int>(ErrorNumber::InternalError), 51);
}

}  // namespace runtime
