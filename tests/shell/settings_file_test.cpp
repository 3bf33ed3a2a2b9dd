#include "report/settings_file.h"

#include <gtest/gtest.h>

#include "astro/runtime_error.h"
#include "forms/program_folder.h"
#include "report/settings.h"
#include "tests/shell/scratch_file.h"

namespace {

using mMoon::ErrorNumber;
using mMoon::Settings;

constexpr std::size_t kRecordStart = 8192;
constexpr std::size_t kFileSize = kRecordStart + mMoon::kSettingsRecordSize;

/// The settings file beside the test program itself.
class SettingsFile : public testing::Test {
 protected:
  ~SettingsFile() override { mMoon::CloseSettingsFile(); }

  static std::vector<unsigned char> BytesOfEveryValue(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<unsigned char>(i * 7 + i / 256);
    }
    return bytes;
  }

  ScratchFile file_{forms::ProgramFolder() + L"\\vesk.dat"};
};

TEST_F(SettingsFile, IsCreatedEmptyAndReadsAllOptionsFalse) {
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  EXPECT_EQ(Settings, mMoon::SettingsRecord{});
  EXPECT_EQ(file_.Read().size(), 0U);
}

TEST_F(SettingsFile, TheFirstWriteMakesTheFile8466BytesLong) {
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  Settings.SouthernView = mMoon::True;
  mMoon::WriteSettings();
  const auto bytes = file_.Read();
  ASSERT_EQ(bytes.size(), 8466U);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    ASSERT_EQ(bytes[i], i == kRecordStart + 270 || i == kRecordStart + 271 ? 0xFF : 0) << i;
  }
}

TEST_F(SettingsFile, CarriesEveryReservedByteThroughAndTouchesNothingElse) {
  const auto before = BytesOfEveryValue(9000);
  file_.Write(before);
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  mMoon::WriteSettings();
  EXPECT_EQ(file_.Read(), before);
}

TEST_F(SettingsFile, ReadsAShortRecordAsZerosBehindItsEnd) {
  auto bytes = BytesOfEveryValue(kFileSize);
  bytes[kRecordStart + 266] = bytes[kRecordStart + 267] = 0xFF;
  bytes.resize(kRecordStart + 268);
  file_.Write(bytes);
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  EXPECT_EQ(Settings.RestoreInTray, mMoon::True);
  EXPECT_EQ(Settings.AutoStart, mMoon::False);
  EXPECT_EQ(Settings.Reserved24, 0);
}

TEST_F(SettingsFile, ReadsAgainWhatAnotherWriterChanged) {
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  auto bytes = std::vector<unsigned char>(kFileSize, 0);
  bytes[kRecordStart + 272] = 0x34;
  file_.Write(bytes);
  mMoon::ReadSettings();
  EXPECT_EQ(Settings.Reserved24, 0x34);
}

TEST_F(SettingsFile, NamesWrongUse) {
  const auto number = [](void (*action)()) {
    try {
      action();
    } catch (const mMoon::RuntimeError& error) {
      return static_cast<int>(error.number());
    }
    return 0;
  };
  EXPECT_EQ(number(mMoon::ReadSettings), 52);
  EXPECT_EQ(number(mMoon::WriteSettings), 52);
  mMoon::OpenSettingsFile();
  EXPECT_EQ(number(mMoon::OpenSettingsFile), 55);
  mMoon::CloseSettingsFile();
  EXPECT_EQ(number(mMoon::ReadSettings), 52);
}

}  // namespace
