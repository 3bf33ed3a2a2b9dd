#pragma once

#include "runtime/random_file_win.h"

namespace tidewell {

/// The settings file, vesk.dat in the program's folder, open as long as the object lives. Errors of every operation:
/// those of runtime::RandomFile.
class SettingsFile {
 public:
  /// Opens the file. A missing file is created empty.
  SettingsFile();

  /// Reads the record into mMoon::Settings. Beyond the end of the file it reads as zeros: every option is false.
  void Read() const;

  /// Writes mMoon::Settings as the record.
  void Write() const;

 private:
  runtime::RandomFile file_;
};

}  // namespace tidewell
