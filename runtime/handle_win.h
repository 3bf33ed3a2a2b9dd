#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace runtime {

/// Releases a system handle with its function.
template <auto Release>
struct Releaser {
  template <class T>
  void operator()(T* handle) const noexcept {
    Release(handle);
  }
};

/// The owner of a system handle: unique<HICON, DestroyIcon>. Null is "none"; translate INVALID_HANDLE_VALUE at the
/// call.
template <class Handle, auto Release>
using unique = std::unique_ptr<std::remove_pointer_t<Handle>, Releaser<Release>>;

using unique_icon = unique<HICON, DestroyIcon>;
using unique_font = unique<HFONT, DeleteObject>;
using unique_menu = unique<HMENU, DestroyMenu>;
using unique_file = unique<HANDLE, CloseHandle>;
using unique_mutex = unique<HANDLE, CloseHandle>;

}  // namespace runtime
