#pragma once

#include <filesystem>

namespace check {

/// What the checks share: a folder of their own, with a copy of the program in it, which goes with the object.
class Stage {
 public:
  /// Makes the folder and copies the program. Throws filesystem_error if that cannot be done.
  Stage(const std::filesystem::path& program, bool quick);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  [[nodiscard]] bool Quick() const noexcept { return quick_; }
  [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return folder_; }
  [[nodiscard]] std::filesystem::path Program() const { return folder_ / L"Tidewell.exe"; }
  [[nodiscard]] std::filesystem::path SettingsFile() const { return folder_ / L"vesk.dat"; }

  /// Removes the settings file: the next start is a first one.
  void Forget() const;

 private:
  std::filesystem::path folder_;
  bool quick_;
};

}  // namespace check
