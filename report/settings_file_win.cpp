#include "report/settings_file_win.h"

#include "report/settings.h"
#include "runtime/program_folder.h"

namespace tidewell {

namespace {

constexpr std::uint32_t kRecordLength = 512;

/// The only record of the file that this program uses.
constexpr std::uint32_t kRecord = 17;

}  // namespace

SettingsFile::SettingsFile() : file_(runtime::ProgramFolder() + L"\\vesk.dat", kRecordLength) {}

void SettingsFile::Read() const {
  SettingsBytes bytes{};
  file_.Read(kRecord, bytes);
  mMoon::Settings = Unpack(bytes, runtime::SystemCodePage());
}

void SettingsFile::Write() const { file_.Write(kRecord, Pack(mMoon::Settings, runtime::SystemCodePage())); }

}  // namespace tidewell
