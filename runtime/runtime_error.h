#pragma once

#include <exception>

namespace runtime {

/// The run-time errors that can end the program. The user sees number and text.
enum class ErrorNumber : int {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  DivisionByZero = 11,
  TypeMismatch = 13,
  InternalError = 51,
  BadFileNameOrNumber = 52,
  FileNotFound = 53,
  DeviceIOError = 57,
  DiskFull = 61,
  PermissionDenied = 70,
  PathFileAccessError = 75,
  PathNotFound = 76,
  ControlArrayElementDoesNotExist = 340,
};

/// Returns the text of an error, in English, without a full stop.
[[nodiscard]] const char* ErrorText(ErrorNumber number) noexcept;

/// A run-time error. Only the window's thunk and the start catch it. They end the message loop; then the start shows
/// the error.
class RuntimeError : public std::exception {
 public:
  explicit RuntimeError(ErrorNumber number) noexcept : number_(number) {}

  [[nodiscard]] ErrorNumber number() const noexcept { return number_; }

  [[nodiscard]] const char* what() const noexcept override { return ErrorText(number_); }

 private:
  ErrorNumber number_;
};

/// Raises 7 Out of memory if the system did not make what was asked of it.
inline void RequireMade(bool made) {
  if (!made) {
    throw RuntimeError(ErrorNumber::OutOfMemory);
  }
}

}  // namespace runtime
