#pragma once

#include <windows.h>

#include "runtime/end_on_error.h"
#include "runtime/runtime_error.h"

namespace forms {

/// What a window is created with.
struct WindowSettings {
  const wchar_t* caption = L"";
  DWORD style = 0;
  DWORD exStyle = 0;
  RECT place{};  ///< outer edges, in pixels of the parent's client area or of the screen
  HWND parent = nullptr;
  INT_PTR id = 0;  ///< of a child
};

/// A window whose messages go to Form::OnMessage(message, wParam, lParam). Form names its window class in
/// `static constexpr const wchar_t* kWindowClass`.
///
/// Neither copied nor moved: the window knows the object's address. Messages before WM_NCCREATE and after WM_NCDESTROY
/// get the default handling.
template <class Form>
class Window {
 public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// The window; null before it is created and after it was destroyed.
  [[nodiscard]] HWND hwnd() const noexcept { return hwnd_; }

 protected:
  Window() = default;

  ~Window() { Destroy(); }

  /// Detaches the window, so that no message reaches the object any more, and destroys it. Call it in the destructor of
  /// a form whose window uses its members, like fonts and icons.
  void Destroy() noexcept {
    if (hwnd_ != nullptr) {
      const HWND window = hwnd_;
      Detach();
      DestroyWindow(window);
    }
  }

  /// Creates the window. Error: 7 Out of memory.
  void Create(const WindowSettings& settings) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass = {.cbSize = sizeof windowClass,
                               .style = 0,
                               .lpfnWndProc = &Thunk,
                               .cbClsExtra = 0,
                               .cbWndExtra = 0,
                               .hInstance = instance,
                               .hIcon = nullptr,
                               .hCursor = LoadCursorW(nullptr, IDC_ARROW),
                               // By its number: it follows the user's choice of colours.
                               .hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1}),
                               .lpszMenuName = nullptr,
                               .lpszClassName = Form::kWindowClass,
                               .hIconSm = nullptr};
    RegisterClassExW(&windowClass);  // fails if it is registered already
    CreateWindowExW(settings.exStyle, Form::kWindowClass, settings.caption, settings.style, settings.place.left,
                    settings.place.top, settings.place.right - settings.place.left,
                    settings.place.bottom - settings.place.top, settings.parent, reinterpret_cast<HMENU>(settings.id),
                    instance, static_cast<Window*>(this));
    runtime::RequireMade(hwnd_ != nullptr);
  }

  /// Closes the form: its Form_Unload hides it or ends the program.
  void Unload() {
    bool Cancel = false;
    static_cast<Form*>(this)->Form_Unload(Cancel);
  }

  /// Gives a message the system's default handling; returns the answer.
  LRESULT DefaultHandling(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return DefWindowProcW(hwnd_, message, wParam, lParam);
  }

 private:
  void Detach() noexcept {
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    hwnd_ = nullptr;
  }

  static LRESULT CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
      auto* const self = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
      self->hwnd_ = window;
      SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_NCDESTROY) {
      self->Detach();
      return DefWindowProcW(window, message, wParam, lParam);
    }
    // Once the program is ending, no handler runs. A window behind an error's box still paints itself, and cannot be
    // closed.
    if (self == nullptr || (runtime::Ending() && message != WM_PAINT)) {
      return runtime::Ending() && message == WM_CLOSE ? 0 : DefWindowProcW(window, message, wParam, lParam);
    }
    try {
      return static_cast<Form*>(self)->OnMessage(message, wParam, lParam);
    } catch (...) {
      runtime::EndOnCurrentException();
      return 0;
    }
  }

  HWND hwnd_ = nullptr;
};

/// Runs the messages of this thread until End. Tab, arrows, Space and Enter work in every form. Error: 51 Internal
/// error if the system hands out no more messages.
void RunMessageLoop();

}  // namespace forms
