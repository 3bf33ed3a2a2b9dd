#include "runtime/runtime_error.h"

namespace runtime {

const char* ErrorText(ErrorNumber number) noexcept {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall:
      return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return "Overflow";
    case ErrorNumber::OutOfMemory:
      return "Out of memory";
    case ErrorNumber::DivisionByZero:
      return "Division by zero";
    case ErrorNumber::TypeMismatch:
      return "Type mismatch";
    case ErrorNumber::InternalError:
      return "Internal error";
    case ErrorNumber::BadFileNameOrNumber:
      return "Bad file name or number";
    case ErrorNumber::FileNotFound:
      return "File not found";
    case ErrorNumber::DeviceIOError:
      return "Device I/O error";
    case ErrorNumber::DiskFull:
      return "Disk full";
    case ErrorNumber::PermissionDenied:
      return "Permission denied";
    case ErrorNumber::PathFileAccessError:
      return "Path/File access error";
    case ErrorNumber::PathNotFound:
      return "Path not found";
    case ErrorNumber::ControlArrayElementDoesNotExist:
      return "Control array element doesn't exist";
  }
  return "Internal error";
}

}  // namespace runtime
