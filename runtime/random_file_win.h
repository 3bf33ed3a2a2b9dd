#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "runtime/handle_win.h"

namespace runtime {

/// A file of records of one length, open for reading and writing at any record. Other programs may read and write it at
/// the same time. Records are numbered from 1.
///
/// Errors of every operation, by the system's reason: 53 File not found, 76 Path not found, 75 Path/File access error
/// (access denied), 70 Permission denied (sharing violation, lock, write protection), 61 Disk full, 52 Bad file name
/// or number, 7 Out of memory (the system's), 57 Device I/O error for the rest.
class RandomFile {
 public:
  /// Opens the file; one that is missing is created empty.
  RandomFile(const std::wstring& path, std::uint32_t recordLength);

  /// Reads from the start of a record. Bytes past the end of the file read as zeros. Error 57 if fewer arrive than the
  /// file holds.
  void Read(std::uint32_t record, std::span<std::byte> bytes) const;

  /// Writes at the start of a record, in one piece, in place. A file too short for it grows; the gap reads as zeros.
  void Write(std::uint32_t record, std::span<const std::byte> bytes) const;

 private:
  unique_file file_;
  std::uint32_t recordLength_;
};

}  // namespace runtime
