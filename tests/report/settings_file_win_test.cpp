#include "report/settings_file_win.h"

#include <gtest/gtest.h>

#include "report/settings.h"
#include "runtime/program_folder.h"
#include "runtime/runtime_error.h"
#include "support/scratch_file_win.h"

namespace {

using mMoon::Settings;
using runtime::ErrorNumber;

constexpr std::size_t kRecordStart = 8192;
constexpr std::size_t kFileSize = kRecordStart + tidewell::kSettingsRecordSize;

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

  ScratchFile file_{runtime::ProgramFolder() + L"\\vesk.dat"};
};

TEST_F(SettingsFile, IsCreatedEmptyAndReadsAllOptionsFalse) {
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  EXPECT_EQ(Settings, tidewell::SettingsRecord{});
  EXPECT_EQ(file_.Read().size(), 0U);
}

TEST_F(SettingsFile, TheFirstWriteMakesTheFile8466BytesLong) {
  mMoon::OpenSettingsFile();
  mMoon::ReadSettings();
  Settings.SouthernView = runtime::True;
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
  EXPECT_EQ(Settings.RestoreInTray, runtime::True);
  EXPECT_EQ(Settings.AutoStart, runtime::False);
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
    } catch (const runtime::RuntimeError& error) {
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
