#include "windows_check/stage.h"

#include <windows.h>

#include <string>

namespace check {

namespace fs = std::filesystem;

Stage::Stage(const fs::path& program, bool quick) : quick_(quick) {
  // The blanks are on purpose: the program must cope with them.
  const fs::path folder = fs::temp_directory_path() / (L"Tidewell check " + std::to_wstring(GetCurrentProcessId()));
  if (!fs::create_directory(folder)) {
    throw fs::filesystem_error("the folder already exists", folder, std::make_error_code(std::errc::file_exists));
  }
  folder_ = folder;
  try {
    fs::copy_file(program, Program());
  } catch (...) {
    std::error_code ignored;
    fs::remove(folder_, ignored);
    throw;
  }
}

Stage::~Stage() {
  std::error_code ignored;
  Forget();
  fs::remove(Program(), ignored);
  fs::remove(folder_, ignored);
}

void Stage::Forget() const {
  std::error_code ignored;
  fs::remove(SettingsFile(), ignored);
}

}  // namespace check
