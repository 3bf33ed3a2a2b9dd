#include "runtime/random_file_win.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "runtime/runtime_error.h"
#include "support/scratch_file_win.h"

namespace {

using runtime::ErrorNumber;

template <class Action>
std::optional<ErrorNumber> ErrorOf(Action action) {
  try {
    action();
    return std::nullopt;
  } catch (const runtime::RuntimeError& error) {
    return error.number();
  }
}

constexpr std::array<std::byte, 3> kBytes = {std::byte{1}, std::byte{2}, std::byte{3}};

TEST(RandomFile, CreatesAMissingFileEmpty) {
  const ScratchFile scratch;
  const runtime::RandomFile file(scratch.path(), 512);
  EXPECT_EQ(scratch.Read().size(), 0U);
}

TEST(RandomFile, WritesARecordAtItsPlaceAfterZeros) {
  const ScratchFile scratch;
  const runtime::RandomFile file(scratch.path(), 512);
  file.Write(17, kBytes);
  const auto bytes = scratch.Read();
  ASSERT_EQ(bytes.size(), 8192U + 3);
  for (std::size_t i = 0; i < 8192; ++i) {
    ASSERT_EQ(bytes[i], 0) << i;
  }
  EXPECT_EQ(bytes[8192], 1);
  EXPECT_EQ(bytes[8194], 3);
}

TEST(RandomFile, LeavesTheRestOfTheFileAlone) {
  const ScratchFile scratch;
  scratch.Write(std::vector<unsigned char>(2000, 7));
  const runtime::RandomFile file(scratch.path(), 512);
  file.Write(2, kBytes);
  const auto bytes = scratch.Read();
  ASSERT_EQ(bytes.size(), 2000U);
  EXPECT_EQ(bytes[511], 7);
  EXPECT_EQ(bytes[512], 1);
  EXPECT_EQ(bytes[515], 7);
}

TEST(RandomFile, ReadsZerosBeyondTheEnd) {
  const ScratchFile scratch;
  scratch.Write({9, 9, 9, 9});
  const runtime::RandomFile file(scratch.path(), 2);
  std::array<std::byte, 4> bytes{};
  bytes.fill(std::byte{5});
  file.Read(2, bytes);
  EXPECT_EQ(bytes, (std::array<std::byte, 4>{std::byte{9}, std::byte{9}, std::byte{0}, std::byte{0}}));
  bytes.fill(std::byte{5});
  file.Read(100, bytes);
  EXPECT_EQ(bytes, (std::array<std::byte, 4>{}));
}

TEST(RandomFile, LetsAnotherProgramReadAndWriteMeanwhile) {
  const ScratchFile scratch;
  const runtime::RandomFile file(scratch.path(), 512);
  const runtime::RandomFile other(scratch.path(), 512);
  other.Write(1, kBytes);
  std::array<std::byte, 3> bytes{};
  file.Read(1, bytes);
  EXPECT_EQ(bytes, kBytes);
}

TEST(RandomFile, NamesTheErrors) {
  const ScratchFile scratch;
  EXPECT_EQ(ErrorOf([&] { runtime::RandomFile(scratch.path() + L"\\no\\such", 512); }), ErrorNumber::PathNotFound);
  EXPECT_EQ(ErrorOf([] { runtime::RandomFile(L"C:\\a<b>|c", 512); }), ErrorNumber::BadFileNameOrNumber);

  CreateDirectoryW(scratch.path().c_str(), nullptr);
  EXPECT_EQ(ErrorOf([&] { runtime::RandomFile(scratch.path(), 512); }), ErrorNumber::PathFileAccessError);
}

TEST(RandomFile, SaysPermissionDeniedIfAnotherHoldsTheFile) {
  const ScratchFile scratch;
  const runtime::unique_file holder(
      CreateFileW(scratch.path().c_str(), GENERIC_READ, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  EXPECT_EQ(ErrorOf([&] { runtime::RandomFile(scratch.path(), 512); }), ErrorNumber::PermissionDenied);
}

}  // namespace
