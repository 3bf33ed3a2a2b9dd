#include <optional>

#include "astro/runtime_error.h"
#include "forms/code_page.h"
#include "forms/program_folder.h"
#include "forms/random_file.h"
#include "report/settings.h"
#include "report/settings_file.h"

namespace mMoon {

namespace {

constexpr std::uint32_t kRecordLength = 512;

/// The only record of the file that this program uses.
constexpr std::uint32_t kRecord = 17;

std::optional<forms::RandomFile> settingsFile;

const forms::RandomFile& OpenFile() {
  if (!settingsFile) {
    throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
  }
  return *settingsFile;
}

}  // namespace

void OpenSettingsFile() {
  if (settingsFile) {
    throw RuntimeError(ErrorNumber::FileAlreadyOpen);
  }
  settingsFile.emplace(forms::ProgramFolder() + L"\\vesk.dat", kRecordLength);
}

void ReadSettings() {
  SettingsBytes bytes{};
  OpenFile().Read(kRecord, bytes);
  Settings = Unpack(bytes, forms::SystemCodePage());
}

void WriteSettings() { OpenFile().Write(kRecord, Pack(Settings, forms::SystemCodePage())); }

void CloseSettingsFile() noexcept { settingsFile.reset(); }

}  // namespace mMoon
