#include "forms/drawing_list_win.h"

#include "runtime/handle_win.h"

namespace forms {

namespace {

RECT ToRect(const Box& box) noexcept {
  return {.left = box.left, .top = box.top, .right = box.right, .bottom = box.bottom};
}

/// Plays each primitive within its box: Wine's Ellipse paints beside a box of a few pixels' width.
class Player {
 public:
  explicit Player(HDC dc) noexcept : dc_(dc) {}

  void operator()(const Ellipse& ellipse) const noexcept {
    const Box box = ellipse.Bounds();
    if (box.right - box.left == 1) {
      DrawColumn(box, ellipse.outline);
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
  /// The system draws nothing for an ellipse without an inside; the terminator of a quarter is one.
  void DrawColumn(const Box& box, Colour colour) const noexcept {
    const runtime::unique_brush brush(CreateSolidBrush(colour));
    const RECT column = ToRect(box);
    FillRect(dc_, &column, brush.get());
  }

  HDC dc_;
};

}  // namespace

void Replay(HDC dc, const DrawingList& drawing) noexcept {
  const Player player(dc);
  for (const DrawingList::Primitive& primitive : drawing.Primitives()) {
    std::visit(player, primitive);
  }
}

}  // namespace forms
