#include "forms/controls_win.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "forms/device_context_win.h"

namespace forms {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kTwipsPerPoint = 20;

struct ControlClass {
  const wchar_t* name;
  DWORD style;
};

ControlClass ClassOf(const ControlDescription& description) {
  switch (description.kind) {
    case ControlKind::Button:
      return {.name = L"BUTTON", .style = BS_PUSHBUTTON | WS_TABSTOP};
    case ControlKind::CheckBox:
      return {.name = L"BUTTON", .style = BS_AUTOCHECKBOX | WS_TABSTOP};
    case ControlKind::PictureBox:
      return {.name = L"STATIC", .style = SS_ICON | SS_REALSIZEIMAGE};
    default:
      return {.name = L"STATIC", .style = SS_NOPREFIX | (description.centred ? DWORD{SS_CENTER} : DWORD{SS_LEFT})};
  }
}

}  // namespace

TwipsPerPixel ReadTwipsPerPixel() {
  const ScreenScope screen;
  const int x = GetDeviceCaps(screen.dc(), LOGPIXELSX);
  const int y = GetDeviceCaps(screen.dc(), LOGPIXELSY);
  runtime::RequireMade(x > 0 && y > 0);  // 0 also without a device context
  return {.x = kTwipsPerInch / x, .y = kTwipsPerInch / y};
}

runtime::unique_font MakeFont(const FontDescription& font) {
  const double scale = ReadTwipsPerPixel().y;
  LOGFONTW logical{};
  // Rounded down: a text must not outgrow its place.
  logical.lfHeight = -static_cast<LONG>(std::floor(font.points * kTwipsPerPoint / scale));
  logical.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  logical.lfCharSet = DEFAULT_CHARSET;
  const std::wstring_view face = scale != kDesignTwipsPerPixel && font.scalable != nullptr ? font.scalable : font.face;
  std::copy_n(face.begin(), std::min(face.size(), std::size_t{LF_FACESIZE - 1}), logical.lfFaceName);
  runtime::unique_font made(CreateFontIndirectW(&logical));
  runtime::RequireMade(made != nullptr);
  return made;
}

runtime::unique_icon LoadIconResource(int id, int width, int height) {
  return runtime::unique_icon(static_cast<HICON>(
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}

RECT ToPixels(const TwipsPlace& place, const TwipsPerPixel& scale) {
  const LONG left = ToPixels(place.left, scale.x);
  const LONG top = ToPixels(place.top, scale.y);
  return {.left = left,
          .top = top,
          .right = left + ToPixels(place.width, scale.x),
          .bottom = top + ToPixels(place.height, scale.y)};
}

Control::Control(const ControlDescription& description, HWND parent)
    : font_(description.kind == ControlKind::PictureBox ? nullptr : MakeFont(description.font)) {
  const ControlClass controlClass = ClassOf(description);
  const RECT place = ToPixels(description.place, ReadTwipsPerPixel());
  const DWORD style =
      WS_CHILD | controlClass.style | (description.visible ? WS_VISIBLE : 0) | (description.enabled ? 0 : WS_DISABLED);
  hwnd_ =
      CreateWindowExW(0, controlClass.name, description.caption, style, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(description.id)),
                      GetModuleHandleW(nullptr), nullptr);
  runtime::RequireMade(hwnd_ != nullptr);
  SendMessageW(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
}

std::wstring Control::Caption() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(hwnd_)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(hwnd_, text.data(), static_cast<int>(text.size()))));
  return text;
}

void Control::SetCaption(const std::wstring& caption) {
  if (caption != Caption()) {
    runtime::RequireMade(SetWindowTextW(hwnd_, caption.c_str()) != FALSE);
  }
}

int Control::State() const noexcept { return static_cast<int>(SendMessageW(hwnd_, BM_GETCHECK, 0, 0)); }

void Control::SetState(int state) noexcept { SendMessageW(hwnd_, BM_SETCHECK, static_cast<WPARAM>(state), 0); }

void Control::SetPicture(HICON picture) noexcept {
  SendMessageW(hwnd_, STM_SETICON, reinterpret_cast<WPARAM>(picture), 0);
}

Frame::Frame(const ControlDescription& description, HWND form, PaintRetry& retry) : retry_(retry) {
  Create({.caption = description.caption,
          .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
          .exStyle = WS_EX_CONTROLPARENT,
          .place = ToPixels(description.place, ReadTwipsPerPixel()),
          .parent = form,
          .id = description.id});
}

LRESULT Frame::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      return SendMessageW(GetParent(hwnd()), message, wParam, lParam);
    case WM_PAINT:
      Paint();
      return 0;
    default:
      return DefaultHandling(message, wParam, lParam);
  }
}

void Frame::Paint() noexcept {
  const PaintScope paint(hwnd(), retry_);
  RECT edge{};
  retry_.Note(GetClientRect(hwnd(), &edge) != FALSE && DrawEdge(paint.dc(), &edge, EDGE_ETCHED, BF_RECT) != FALSE);
}

}  // namespace forms
