#include "forms/drawing_list_win.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <variant>

namespace forms {

namespace {

constexpr int kNarrow = 10;  ///< pixels

/// Plays each primitive within its box; says whether it was drawn.
class Player {
 public:
  explicit Player(HDC dc) noexcept : dc_(dc) {}

  bool operator()(const Ellipse& ellipse) const noexcept {
    const Box box = ellipse.Bounds();
    if (!Prepare(box, ellipse.outline, ellipse.fill)) {
      return false;
    }
    if (ellipse.fill == ellipse.outline && box.right - box.left < kNarrow) {
      return DrawNarrow(box);
    }
    return ::Ellipse(dc_, box.left, box.top, box.right, box.bottom) != FALSE;
  }

  bool operator()(const Pie& pie) const noexcept {
    const Box& box = pie.box;
    return Prepare(box, pie.fill, pie.fill) &&
           ::Pie(dc_, box.left, box.top, box.right, box.bottom, pie.from.x, pie.from.y, pie.to.x, pie.to.y) != FALSE;
  }

 private:
  /// Clips to the box, and selects a pen of one pixel and a brush.
  bool Prepare(const Box& box, Colour outline, const std::optional<Colour>& fill) const noexcept {
    return SelectClipRgn(dc_, nullptr) != ERROR &&
           IntersectClipRect(dc_, box.left, box.top, box.right, box.bottom) != ERROR &&
           SelectObject(dc_, GetStockObject(DC_PEN)) != nullptr && SetDCPenColor(dc_, outline) != CLR_INVALID &&
           SelectObject(dc_, GetStockObject(fill ? DC_BRUSH : NULL_BRUSH)) != nullptr &&
           (!fill || SetDCBrushColor(dc_, *fill) != CLR_INVALID);
  }

  /// Row by row: the system draws nothing for an ellipse without an inside, like the terminator of a quarter, and Wine
  /// draws stray pixels for one that is few pixels wide.
  bool DrawNarrow(const Box& box) const noexcept {
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    const double halfWidth = (box.right - 1 - box.left) / 2.0;
    const double halfHeight = (box.bottom - 1 - box.top) / 2.0;
    bool whole = true;
    for (LONG y = box.top; y < box.bottom; ++y) {
      const double height = (y - box.top) / halfHeight - 1;
      const LONG inset = std::lround(halfWidth * (1 - std::sqrt(std::max(0.0, 1 - height * height))));
      const RECT line = {.left = box.left + inset, .top = y, .right = box.right - inset, .bottom = y + 1};
      whole = FillRect(dc_, &line, brush) != 0 && whole;
    }
    return whole;
  }

  HDC dc_;
};

}  // namespace

RECT ToRect(const Box& box) noexcept {
  return {.left = box.left, .top = box.top, .right = box.right, .bottom = box.bottom};
}

bool Replay(HDC dc, const DrawingList& drawing) noexcept {
  const Player player(dc);
  bool whole = true;
  for (const DrawingList::Primitive& primitive : drawing.Primitives()) {
    whole = std::visit(player, primitive) && whole;
  }
  return whole;
}

}  // namespace forms
