#pragma once

#include <filesystem>

namespace check {

/// What the checks share: a temporary folder with a copy of the program. The destructor removes it.
class Stage {
 public:
  /// Throws filesystem_error if the folder cannot be made or the program not copied.
  Stage(const std::filesystem::path& program, bool quick);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  [[nodiscard]] bool Quick() const noexcept { return quick_; }
  [[nodiscard]] std::filesystem::path Program() const { return folder_ / L"Tidewell.exe"; }
  [[nodiscard]] std::filesystem::path SettingsFile() const { return folder_ / L"vesk.dat"; }

  /// Removes the settings file, so that the next start is a first one.
  void Forget() const;

 private:
  std::filesystem::path folder_;
  bool quick_;
};

}  // namespace check
