#include "forms/drawing_list_win.h"

#include <algorithm>
#include <cmath>

#include "runtime/handle_win.h"

namespace forms {

namespace {

constexpr int kNarrow = 10;  ///< pixels

/// Plays each primitive within its box.
class Player {
 public:
  explicit Player(HDC dc) noexcept : dc_(dc) {}

  void operator()(const Ellipse& ellipse) const noexcept {
    const Box box = ellipse.Bounds();
    if (ellipse.fill == ellipse.outline && box.right - box.left < kNarrow) {
      DrawNarrow(box, ellipse.outline);
      return;
    }
    const runtime::ClipScope clip(dc_, ToRect(box));
    const runtime::unique_pen pen(CreatePen(PS_SOLID, 1, ellipse.outline));
    const runtime::unique_brush brush(ellipse.fill ? CreateSolidBrush(*ellipse.fill) : nullptr);
    const runtime::SelectScope selectPen(dc_, pen.get());
    const runtime::SelectScope selectBrush(dc_, brush ? brush.get() : GetStockObject(NULL_BRUSH));
    ::Ellipse(dc_, box.left, box.top, box.right, box.bottom);
  }

  void operator()(const Pie& pie) const noexcept {
    const runtime::ClipScope clip(dc_, ToRect(pie.box));
    const runtime::unique_pen pen(CreatePen(PS_SOLID, 1, pie.fill));
    const runtime::unique_brush brush(CreateSolidBrush(pie.fill));
    const runtime::SelectScope selectPen(dc_, pen.get());
    const runtime::SelectScope selectBrush(dc_, brush.get());
    ::Pie(dc_, pie.box.left, pie.box.top, pie.box.right, pie.box.bottom, pie.from.x, pie.from.y, pie.to.x, pie.to.y);
  }

 private:
  /// Row by row: the system draws nothing for an ellipse without an inside, like the terminator of a quarter, and Wine
  /// draws stray pixels for one that is few pixels wide.
  void DrawNarrow(const Box& box, Colour colour) const noexcept {
    const runtime::unique_brush brush(CreateSolidBrush(colour));
    const double halfWidth = (box.right - 1 - box.left) / 2.0;
    const double halfHeight = (box.bottom - 1 - box.top) / 2.0;
    for (LONG y = box.top; y < box.bottom; ++y) {
      const double height = (y - box.top) / halfHeight - 1;
      const LONG inset = std::lround(halfWidth * (1 - std::sqrt(std::max(0.0, 1 - height * height))));
      const RECT line = {.left = box.left + inset, .top = y, .right = box.right - inset, .bottom = y + 1};
      FillRect(dc_, &line, brush.get());
    }
  }

  HDC dc_;
};

}  // namespace

RECT ToRect(const Box& box) noexcept {
  return {.left = box.left, .top = box.top, .right = box.right, .bottom = box.bottom};
}

void Replay(HDC dc, const DrawingList& drawing) noexcept {
  const Player player(dc);
  for (const DrawingList::Primitive& primitive : drawing.Primitives()) {
    std::visit(player, primitive);
  }
}

}  // namespace forms
