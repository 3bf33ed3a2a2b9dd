#pragma once

#include <windows.h>

#include <string>
#include <utility>

/// A path for a test's file or folder, which is deleted before and after.
class ScratchFile {
 public:
  explicit ScratchFile(std::wstring path) : path_(std::move(path)) { Remove(); }
  ~ScratchFile() { Remove(); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  [[nodiscard]] const std::wstring& path() const { return path_; }

 private:
  void Remove() const {
    DeleteFileW(path_.c_str());
    RemoveDirectoryW(path_.c_str());
  }

  std::wstring path_;
};
