#pragma once

#include <filesystem>
#include <string>
#include <utility>

/// A path for a test's file or folder, which is deleted before and after.
class ScratchFile {
 public:
  explicit ScratchFile(std::wstring path) : path_(std::move(path)) { std::filesystem::remove(path_); }
  ~ScratchFile() { std::filesystem::remove(path_); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  [[nodiscard]] const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};
