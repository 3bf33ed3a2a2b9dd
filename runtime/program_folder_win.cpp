#include <windows.h>

#include "runtime/program_folder.h"
#include "runtime/runtime_error.h"

namespace runtime {

std::wstring ProgramFolder() {
  std::wstring path(MAX_PATH, L'\0');
  // A path that does not fit is cut to the size given: then there is more of it.
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) {
      throw RuntimeError(ErrorNumber::PathNotFound);
    }
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(2 * path.size());
  }
  return path.substr(0, path.find_last_of(L'\\'));
}

}  // namespace runtime
