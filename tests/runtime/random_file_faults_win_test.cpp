// Disk faults. A test cannot make them, so it replaces the system's reading and writing.

#include <gtest/gtest.h>

#include <array>

#include "runtime/random_file_win.h"
#include "runtime/runtime_error.h"
#include "support/scratch_file_win.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&WriteFile) writeFileSlot asm("__imp__WriteFile@20");
extern "C" decltype(&ReadFile) readFileSlot asm("__imp__ReadFile@20");

namespace {

using runtime::ErrorNumber;

DWORD fault = 0;

BOOL WINAPI RefuseToWrite(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) {
  *written = 0;
  SetLastError(fault);
  return FALSE;
}

BOOL WINAPI WriteHalf(HANDLE, LPCVOID, DWORD size, LPDWORD written, LPOVERLAPPED) {
  *written = size / 2;
  return TRUE;
}

BOOL WINAPI RefuseToRead(HANDLE, LPVOID, DWORD, LPDWORD read, LPOVERLAPPED) {
  *read = 0;
  SetLastError(fault);
  return FALSE;
}

BOOL WINAPI ReadHalf(HANDLE, LPVOID, DWORD size, LPDWORD read, LPOVERLAPPED) {
  *read = size / 2;
  return TRUE;
}

/// The number of the routine's error, 0 for success.
template <class Routine>
int ErrorOf(Routine routine) {
  try {
    routine();
    return 0;
  } catch (const runtime::RuntimeError& error) {
    return static_cast<int>(error.number());
  }
}

class RandomFileFaults : public testing::Test {
 protected:
  int WriteError() {
    return ErrorOf([this] { file_.Write(1, bytes_); });
  }
  int ReadError() {
    return ErrorOf([this] { file_.Read(1, bytes_); });
  }

  ScratchFile scratch_;
  runtime::RandomFile file_{scratch_.path(), 512};
  std::array<std::byte, 274> bytes_{};
};

TEST_F(RandomFileFaults, ARefusedWriteIsAnError) {
  ASSERT_EQ(WriteError(), 0);
  const SystemStandIn standIn(writeFileSlot, &RefuseToWrite);
  fault = ERROR_WRITE_PROTECT;
  EXPECT_EQ(WriteError(), 70);
  fault = ERROR_LOCK_VIOLATION;
  EXPECT_EQ(WriteError(), 70);
  fault = ERROR_ACCESS_DENIED;
  EXPECT_EQ(WriteError(), 75);
  fault = ERROR_DISK_FULL;
  EXPECT_EQ(WriteError(), 61);
  fault = ERROR_HANDLE_DISK_FULL;
  EXPECT_EQ(WriteError(), 61);
  fault = ERROR_CRC;
  EXPECT_EQ(WriteError(), 57);
  fault = ERROR_NOT_ENOUGH_MEMORY;
  EXPECT_EQ(WriteError(), 7);
  fault = ERROR_NO_SYSTEM_RESOURCES;
  EXPECT_EQ(WriteError(), 7);
}

TEST_F(RandomFileFaults, HalfAWrittenRecordMeansAFullDisk) {
  const SystemStandIn standIn(writeFileSlot, &WriteHalf);
  EXPECT_EQ(WriteError(), 61);
}

TEST_F(RandomFileFaults, AFailedReadIsAnError) {
  const SystemStandIn standIn(readFileSlot, &RefuseToRead);
  fault = ERROR_LOCK_VIOLATION;
  EXPECT_EQ(ReadError(), 70);
  fault = ERROR_CRC;
  EXPECT_EQ(ReadError(), 57);
  fault = ERROR_HANDLE_EOF;
  EXPECT_EQ(ReadError(), 0);
}

TEST_F(RandomFileFaults, FewerBytesThanTheFilesLengthAreAnError) {
  ASSERT_EQ(WriteError(), 0);
  const SystemStandIn standIn(readFileSlot, &ReadHalf);
  EXPECT_EQ(ReadError(), 57);
}

}  // namespace
