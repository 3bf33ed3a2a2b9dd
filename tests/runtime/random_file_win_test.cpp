#include "runtime/random_file_win.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <utility>

#include "runtime/program_folder.h"
#include "support/raises.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&WriteFile) writeFileSlot asm("__imp__WriteFile@20");
extern "C" decltype(&ReadFile) readFileSlot asm("__imp__ReadFile@20");

namespace {

using enum runtime::ErrorNumber;
using runtime::RandomFile;
using support::Raises;

using Bytes = std::array<std::byte, 3>;
constexpr Bytes kBytes = {std::byte{1}, std::byte{2}, std::byte{3}};

class RandomFileTest : public testing::Test {
 protected:
  RandomFileTest() { std::filesystem::remove(path_); }

  const std::wstring path_ = runtime::ProgramFolder() + L"\\scratch.dat";
};

TEST_F(RandomFileTest, LetsAnotherProgramReadAndWriteMeanwhile) {
  const RandomFile file(path_, 512);
  const RandomFile other(path_, 512);
  other.Write(2, kBytes);
  Bytes bytes{};
  file.Read(2, bytes);
  EXPECT_EQ(bytes, kBytes);
}

TEST_F(RandomFileTest, ReadsZerosBeyondTheEnd) {
  const RandomFile file(path_, 2);
  file.Write(1, kBytes);
  Bytes bytes = kBytes;
  file.Read(2, bytes);
  EXPECT_EQ(bytes, (Bytes{std::byte{3}}));
  bytes = kBytes;
  file.Read(100, bytes);
  EXPECT_EQ(bytes, Bytes{});
}

TEST_F(RandomFileTest, NamesTheErrorsOfOpening) {
  EXPECT_TRUE(Raises(PathNotFound, [&] { RandomFile(path_ + L"\\no\\such", 512); }));
  EXPECT_TRUE(Raises(BadFileNameOrNumber, [] { RandomFile(L"C:\\a<b>|c", 512); }));
}

// ---- faults of a disk

BOOL WINAPI WriteHalf(HANDLE, LPCVOID, DWORD size, LPDWORD written, LPOVERLAPPED) {
  *written = size / 2;
  return TRUE;
}

BOOL WINAPI ReadHalf(HANDLE, LPVOID, DWORD size, LPDWORD read, LPOVERLAPPED) {
  *read = size / 2;
  return TRUE;
}

TEST_F(RandomFileTest, NamesTheErrorOfARefusedWrite) {
  const RandomFile file(path_, 512);
  const Refused<writeFileSlot, FALSE> refused;
  for (const auto& [fault, error] : {std::pair{ERROR_WRITE_PROTECT, PermissionDenied},
                                     {ERROR_LOCK_VIOLATION, PermissionDenied},
                                     {ERROR_ACCESS_DENIED, PathFileAccessError},
                                     {ERROR_DISK_FULL, DiskFull},
                                     {ERROR_HANDLE_DISK_FULL, DiskFull},
                                     {ERROR_CRC, DeviceIOError},
                                     {ERROR_NOT_ENOUGH_MEMORY, OutOfMemory},
                                     {ERROR_NO_SYSTEM_RESOURCES, OutOfMemory}}) {
    SetLastError(static_cast<DWORD>(fault));
    EXPECT_TRUE(Raises(error, [&] { file.Write(1, kBytes); })) << fault;
  }
}

TEST_F(RandomFileTest, TreatsAHalfWrittenRecordAsAFullDisk) {
  const RandomFile file(path_, 512);
  const SystemStandIn standIn(writeFileSlot, &WriteHalf);
  EXPECT_TRUE(Raises(DiskFull, [&] { file.Write(1, kBytes); }));
}

TEST_F(RandomFileTest, NamesTheErrorOfAFailedRead) {
  const RandomFile file(path_, 512);
  file.Write(1, kBytes);
  Bytes bytes{};
  {
    const Refused<readFileSlot, FALSE> refused;
    for (const auto& [fault, error] : {std::pair{ERROR_LOCK_VIOLATION, PermissionDenied}, {ERROR_CRC, DeviceIOError}}) {
      SetLastError(static_cast<DWORD>(fault));
      EXPECT_TRUE(Raises(error, [&] { file.Read(1, bytes); })) << fault;
    }
    SetLastError(ERROR_HANDLE_EOF);
    EXPECT_NO_THROW(file.Read(2, bytes));
  }
  const SystemStandIn standIn(readFileSlot, &ReadHalf);
  EXPECT_TRUE(Raises(DeviceIOError, [&] { file.Read(1, bytes); })) << "fewer bytes than the file's length";
}

}  // namespace
