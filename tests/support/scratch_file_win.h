#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

/// A path for a test's file, by default in the temporary folder. The file is deleted before and after.
class ScratchFile {
 public:
  ScratchFile() {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    path_ = std::wstring(folder) + L"tidewell-test-" + std::to_wstring(GetCurrentProcessId()) + L".dat";
    Remove();
  }
  explicit ScratchFile(std::wstring path) : path_(std::move(path)) { Remove(); }
  ~ScratchFile() { Remove(); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  [[nodiscard]] const std::wstring& path() const { return path_; }

  void Write(const std::vector<unsigned char>& bytes) const {
    const HANDLE file = CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
  }

  [[nodiscard]] std::vector<unsigned char> Read() const {
    const HANDLE file = CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    std::vector<unsigned char> bytes(file == INVALID_HANDLE_VALUE ? 0 : GetFileSize(file, nullptr));
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    CloseHandle(file);
    return bytes;
  }

 private:
  void Remove() const {
    DeleteFileW(path_.c_str());
    RemoveDirectoryW(path_.c_str());
  }

  std::wstring path_;
};
