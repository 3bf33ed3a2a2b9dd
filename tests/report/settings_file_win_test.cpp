#include "report/settings_file_win.h"

#include <gtest/gtest.h>

#include "report/settings.h"
#include "runtime/program_folder.h"
#include "support/scratch_file_win.h"

namespace {

using mMoon::Settings;
using tidewell::SettingsFile;

constexpr std::size_t kRecordStart = 8192;
constexpr std::size_t kFileSize = kRecordStart + tidewell::kSettingsRecordSize;

/// The settings file next to the test program.
class SettingsFileTest : public testing::Test {
 protected:
  static std::vector<unsigned char> BytesOfEveryValue(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<unsigned char>(i * 7 + i / 256);
    }
    return bytes;
  }

  ScratchFile file_{runtime::ProgramFolder() + L"\\vesk.dat"};
};

TEST_F(SettingsFileTest, IsCreatedEmptyAndReadsAllOptionsFalse) {
  const SettingsFile settingsFile;
  settingsFile.Read();
  EXPECT_EQ(Settings, tidewell::SettingsRecord{});
  EXPECT_EQ(file_.Read().size(), 0U);
}

TEST_F(SettingsFileTest, TheFirstWriteMakesTheFile8466BytesLong) {
  const SettingsFile settingsFile;
  settingsFile.Read();
  Settings.SouthernView = runtime::True;
  settingsFile.Write();
  const auto bytes = file_.Read();
  ASSERT_EQ(bytes.size(), 8466U);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    ASSERT_EQ(bytes[i], i == kRecordStart + 270 || i == kRecordStart + 271 ? 0xFF : 0) << i;
  }
}

TEST_F(SettingsFileTest, KeepsEveryReservedByteAndTouchesNothingElse) {
  const auto before = BytesOfEveryValue(9000);
  file_.Write(before);
  const SettingsFile settingsFile;
  settingsFile.Read();
  settingsFile.Write();
  EXPECT_EQ(file_.Read(), before);
}

TEST_F(SettingsFileTest, ReadsZerosAfterTheEndOfAShortRecord) {
  auto bytes = BytesOfEveryValue(kFileSize);
  bytes[kRecordStart + 266] = bytes[kRecordStart + 267] = 0xFF;
  bytes.resize(kRecordStart + 268);
  file_.Write(bytes);
  const SettingsFile settingsFile;
  settingsFile.Read();
  EXPECT_EQ(Settings.RestoreInTray, runtime::True);
  EXPECT_EQ(Settings.AutoStart, runtime::False);
  EXPECT_EQ(Settings.Reserved24, 0);
}

TEST_F(SettingsFileTest, ReadsAgainWhatAnotherWriterChanged) {
  const SettingsFile settingsFile;
  settingsFile.Read();
  auto bytes = std::vector<unsigned char>(kFileSize, 0);
  bytes[kRecordStart + 272] = 0x34;
  file_.Write(bytes);
  settingsFile.Read();
  EXPECT_EQ(Settings.Reserved24, 0x34);
}

}  // namespace
