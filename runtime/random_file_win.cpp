#include "runtime/random_file_win.h"

#include <algorithm>
#include <iterator>

#include "runtime/runtime_error.h"

namespace runtime {

namespace {

RuntimeError ErrorOf(DWORD reason) {
  switch (reason) {
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
    case ERROR_NO_SYSTEM_RESOURCES:
    case ERROR_COMMITMENT_LIMIT:
    case ERROR_NOT_ENOUGH_QUOTA:
      return RuntimeError(ErrorNumber::OutOfMemory);
    case ERROR_FILE_NOT_FOUND:
      return RuntimeError(ErrorNumber::FileNotFound);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
      return RuntimeError(ErrorNumber::PathNotFound);
    case ERROR_ACCESS_DENIED:
      return RuntimeError(ErrorNumber::PathFileAccessError);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return RuntimeError(ErrorNumber::PermissionDenied);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return RuntimeError(ErrorNumber::DiskFull);
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_HANDLE:
      return RuntimeError(ErrorNumber::BadFileNameOrNumber);
    default:
      return RuntimeError(ErrorNumber::DeviceIOError);
  }
}

/// Where a record starts in the file.
std::int64_t OffsetOf(std::uint32_t record, std::uint32_t recordLength) {
  return std::int64_t{record - 1} * recordLength;
}

/// The place of a record, for reading and writing without a file pointer.
OVERLAPPED PlaceOf(std::uint32_t record, std::uint32_t recordLength) {
  const std::int64_t offset = OffsetOf(record, recordLength);
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

}  // namespace

RandomFile::RandomFile(const std::wstring& path, std::uint32_t recordLength) : recordLength_(recordLength) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throw ErrorOf(GetLastError());
  }
  file_.reset(file);
}

void RandomFile::Read(std::uint32_t record, std::span<std::byte> bytes) const {
  OVERLAPPED place = PlaceOf(record, recordLength_);
  LARGE_INTEGER length{};  // not after the read: by then another writer may have lengthened the file
  if (GetFileSizeEx(file_.get(), &length) == FALSE) {
    throw ErrorOf(GetLastError());
  }
  DWORD read = 0;
  if (ReadFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, &place) == FALSE) {
    const DWORD reason = GetLastError();
    if (reason != ERROR_HANDLE_EOF) {
      throw ErrorOf(reason);
    }
    read = 0;
  }
  // A short read is not the end of the file. If we took it for that, the next write would zero what others have stored.
  if (read < std::min<std::int64_t>(length.QuadPart - OffsetOf(record, recordLength_), std::ssize(bytes))) {
    throw RuntimeError(ErrorNumber::DeviceIOError);
  }
  std::ranges::fill(bytes.subspan(read), std::byte{0});
}

void RandomFile::Write(std::uint32_t record, std::span<const std::byte> bytes) const {
  OVERLAPPED place = PlaceOf(record, recordLength_);
  DWORD written = 0;
  if (WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, &place) == FALSE) {
    throw ErrorOf(GetLastError());
  }
  if (written != bytes.size()) {
    throw RuntimeError(ErrorNumber::DiskFull);
  }
}

}  // namespace runtime
