#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace forms {

/// A colour as Windows has it: 0x00BBGGRR.
using Colour = std::uint32_t;

/// A pixel, counted right and down from the top left corner of the client area.
struct Point {
  int x, y;
  bool operator==(const Point&) const = default;
};

/// A rectangle of pixels; right and bottom are the first pixel outside.
struct Box {
  int left, top, right, bottom;
  bool operator==(const Box&) const = default;
};

/// An outlined ellipse, filled unless the fill is transparent. The outline runs through the pixels at the ends of the
/// axes.
struct Ellipse {
  Point centre;
  double halfWidth, halfHeight;
  Colour outline;
  std::optional<Colour> fill;
  bool operator==(const Ellipse&) const = default;
};

/// The part of the ellipse in the box that lies counter-clockwise from the first radial point to the second, outlined
/// and filled in one colour.
struct Pie {
  Box box;
  Point from, to;
  Colour fill;
  bool operator==(const Pie&) const = default;
};

/// What is drawn, in pixels at 96 dpi.
using Primitive = std::variant<Ellipse, Pie>;

/// Pixels of the screen per pixel of a drawing.
struct PixelScale {
  double x = 1, y = 1;
};

/// The two radial points between which a pie lies.
struct Radials {
  Point from, to;
  bool operator==(const Radials&) const = default;
};

/// An ellipse or a pie in whole pixels of the screen.
struct Shape {
  Box box;
  Colour outline;
  std::optional<Colour> fill;
  std::optional<Radials> radials;  ///< of a pie
  bool operator==(const Shape&) const = default;
};

/// Scales a box to the screen, then rounds its edges.
[[nodiscard]] Box OnScreen(const Box& box, const PixelScale& scale);

/// Scales a primitive to the screen and rounds it last, so that circles stay round.
[[nodiscard]] Shape OnScreen(const Primitive& primitive, const PixelScale& scale);

/// How shapes are filled: with the fill colour or not at all.
enum class FillStyle : std::uint8_t { Solid, Transparent };

/// How outlines are drawn: always solid.
enum class DrawStyle : std::uint8_t { Solid };

/// What has been drawn on a form. The form replays the list whenever it is painted: the drawing persists without a
/// bitmap and is crisp on any screen.
class DrawingList {
 public:
  /// Forgets what was drawn; the styles and colours stay.
  void Cls() noexcept { primitives_.clear(); }

  /// Set what the next circles are drawn with.
  void SetDrawStyle(DrawStyle style) noexcept { drawStyle_ = style; }
  void SetFillStyle(FillStyle style) noexcept { fillStyle_ = style; }
  void SetFillColor(Colour colour) noexcept { fillColor_ = colour; }

  /// The outline of shapes that name none; never used.
  void SetForeColor(Colour colour) noexcept { foreColor_ = colour; }
  [[nodiscard]] Colour ForeColor() const noexcept { return foreColor_; }

  /// Draws a circle, or an ellipse if the aspect is not 1: the vertical half-axis over the horizontal one. The radius
  /// is the larger half-axis. A negative aspect counts by its magnitude.
  void Circle(Point centre, double radius, Colour outline, double aspect = 1);

  /// Draws a pie, whatever the styles.
  void DrawPie(const Pie& pie) { primitives_.emplace_back(pie); }

  /// What was drawn since Cls, in the order of drawing.
  [[nodiscard]] const std::vector<Primitive>& Primitives() const noexcept { return primitives_; }

 private:
  std::vector<Primitive> primitives_;
  DrawStyle drawStyle_ = DrawStyle::Solid;
  FillStyle fillStyle_ = FillStyle::Transparent;
  Colour fillColor_ = 0;
  Colour foreColor_ = 0;
};

}  // namespace forms
