#include "forms/drawing_list_win.h"

#include <algorithm>
#include <cmath>

#include "forms/controls_win.h"

namespace forms {

namespace {

constexpr int kNarrow = 10;  ///< pixels

/// Paints shapes within their boxes. Each function returns whether all was painted.
class Painter {
 public:
  Painter(HDC dc, const PixelScale& scale) noexcept
      : dc_(dc), penWidth_(std::max(1, static_cast<int>(std::lround(std::min(scale.x, scale.y))))) {}

  [[nodiscard]] bool Paint(const Shape& shape) const noexcept {
    const Box& box = shape.box;
    if (!Prepare(shape)) {
      return false;
    }
    if (shape.radials) {
      const auto& [from, to] = *shape.radials;
      return ::Pie(dc_, box.left, box.top, box.right, box.bottom, from.x, from.y, to.x, to.y) != FALSE;
    }
    const bool oneColour = shape.fill == shape.outline;
    if (oneColour && box.right - box.left < kNarrow) {
      return PaintNarrow(box);
    }
    return ::Ellipse(dc_, box.left, box.top, box.right, box.bottom) != FALSE && (oneColour || Widen(box));
  }

 private:
  /// Clips to the box, and selects a pen of one pixel and a brush.
  [[nodiscard]] bool Prepare(const Shape& shape) const noexcept {
    const Box& box = shape.box;
    const std::optional<Colour>& fill = shape.fill;
    return SelectClipRgn(dc_, nullptr) != ERROR &&
           IntersectClipRect(dc_, box.left, box.top, box.right, box.bottom) != ERROR &&
           SelectObject(dc_, GetStockObject(DC_PEN)) != nullptr && SetDCPenColor(dc_, shape.outline) != CLR_INVALID &&
           SelectObject(dc_, GetStockObject(fill ? DC_BRUSH : NULL_BRUSH)) != nullptr &&
           (!fill || SetDCBrushColor(dc_, *fill) != CLR_INVALID);
  }

  /// Row by row: the system draws nothing for an ellipse without an inside, like a quarter's terminator, and Wine draws
  /// stray pixels for a narrow one.
  [[nodiscard]] bool PaintNarrow(const Box& box) const noexcept {
    auto* const brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    const double halfWidth = (box.right - 1 - box.left) / 2.0;
    const double halfHeight = (box.bottom - 1 - box.top) / 2.0;
    bool whole = true;
    for (LONG y = box.top; y < box.bottom; ++y) {
      const double height = (y - box.top) / halfHeight - 1;
      const LONG inset = std::lround(halfWidth * (1 - std::sqrt(std::max(0.0, 1 - height * height))));
      const RECT line = {.left = box.left + inset, .top = y, .right = box.right - inset, .bottom = y + 1};
      // An even width leaves the first and the last row empty.
      whole = (line.left >= line.right || FillRect(dc_, &line, brush) != 0) && whole;
    }
    return whole;
  }

  /// The stock pen is one pixel wide: draws a wider outline penWidth_ * penWidth_ times, each shifted by a pixel.
  [[nodiscard]] bool Widen(const Box& box) const noexcept {
    if (penWidth_ == 1) {
      return true;
    }
    bool whole = SelectObject(dc_, GetStockObject(NULL_BRUSH)) != nullptr;
    for (int place = 0; place < penWidth_ * penWidth_; ++place) {
      const int left = box.left + place % penWidth_;
      const int top = box.top + place / penWidth_;
      whole = ::Ellipse(dc_, left, top, left + box.right - box.left - penWidth_ + 1,
                        top + box.bottom - box.top - penWidth_ + 1) != FALSE &&
              whole;
    }
    return whole;
  }

  HDC dc_;
  int penWidth_;  ///< of an outline, in pixels of the screen
};

}  // namespace

PixelScale ReadPixelScale() {
  const TwipsPerPixel screen = ReadTwipsPerPixel();
  return {.x = kDesignTwipsPerPixel / screen.x, .y = kDesignTwipsPerPixel / screen.y};
}

bool Replay(HDC dc, std::span<const Primitive> drawing, const PixelScale& scale) noexcept {
  const Painter painter(dc, scale);
  bool whole = true;
  for (const Primitive& primitive : drawing) {
    whole = painter.Paint(OnScreen(primitive, scale)) && whole;
  }
  return whole;
}

}  // namespace forms
