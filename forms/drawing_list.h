#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace forms {

/// A colour as Windows has it: 0x00BBGGRR.
using Colour = std::uint32_t;

/// A pixel, counted right and down from the top left one of the client area.
struct Point {
  int x, y;
  bool operator==(const Point&) const = default;
};

/// A rectangle of pixels; right and bottom are the first pixel outside.
struct Box {
  int left, top, right, bottom;
  bool operator==(const Box&) const = default;
};

/// An outlined ellipse, filled unless the fill is transparent. Half-axes in pixels.
struct Ellipse {
  Point centre;
  double halfWidth, halfHeight;
  Colour outline;
  std::optional<Colour> fill;

  /// Whether both are drawn with the same pixels.
  bool operator==(const Ellipse& other) const;

  /// The pixels that the ellipse covers, which are all that its drawing depends on: its outline runs through the pixels
  /// at the ends of its axes.
  [[nodiscard]] Box Bounds() const;
};

/// The part of the ellipse in the box that lies counter-clockwise from the first radial point to the second, outlined
/// and filled in one colour.
struct Pie {
  Box box;
  Point from, to;
  Colour fill;
  bool operator==(const Pie&) const = default;
};

/// How shapes are filled: with the fill colour or not at all.
enum class FillStyle : std::uint8_t { Solid, Transparent };

/// How outlines are drawn. Solid is the only style that the program draws with.
enum class DrawStyle : std::uint8_t { Solid };

/// What has been drawn on a form: a list of primitives that the form replays whenever it is painted, so that the
/// drawing persists without a bitmap and stays crisp where Windows scales it up.
class DrawingList {
 public:
  using Primitive = std::variant<Ellipse, Pie>;

  /// Forgets what was drawn; the styles and colours stay.
  void Cls() noexcept { primitives_.clear(); }

  /// Set what the circles from now on are drawn with; what stands already keeps its look.
  void SetDrawStyle(DrawStyle style) noexcept { drawStyle_ = style; }
  void SetFillStyle(FillStyle style) noexcept { fillStyle_ = style; }
  void SetFillColor(Colour colour) noexcept { fillColor_ = colour; }

  /// The colour of the shapes that name none. The program draws no such shape.
  void SetForeColor(Colour colour) noexcept { foreColor_ = colour; }
  [[nodiscard]] Colour ForeColor() const noexcept { return foreColor_; }

  /// Draws a circle, or an ellipse when the aspect, the vertical half-axis over the horizontal one, is not 1. The
  /// radius is the larger half-axis. Of a negative aspect the magnitude counts.
  void Circle(Point centre, double radius, Colour outline, double aspect = 1);

  /// Draws a pie as it is, whatever the styles.
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
