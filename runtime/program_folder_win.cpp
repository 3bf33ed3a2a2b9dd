#include <windows.h>

#include "runtime/program_folder.h"
#include "runtime/runtime_error.h"

namespace runtime {

std::wstring ProgramFolder() {
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  // A truncated path fills the buffer.
  while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size()) {
    path.resize(2 * path.size());
  }
  if (length == 0) {
    throw RuntimeError(ErrorNumber::PathNotFound);
  }
  return path.substr(0, path.rfind(L'\\', length));
}

}  // namespace runtime
