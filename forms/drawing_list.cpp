#include "forms/drawing_list.h"

#include <cmath>

namespace forms {

namespace {

Box Rounded(double left, double top, double right, double bottom, const PixelScale& scale) {
  const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
  return {.left = round(left * scale.x),
          .top = round(top * scale.y),
          .right = round(right * scale.x),
          .bottom = round(bottom * scale.y)};
}

Point Centre(const Box& box) { return {.x = (box.left + box.right) / 2, .y = (box.top + box.bottom) / 2}; }

Shape Scaled(const Ellipse& ellipse, const PixelScale& scale) {
  const auto& [centre, halfWidth, halfHeight, outline, fill] = ellipse;
  return {.box = Rounded(centre.x - halfWidth, centre.y - halfHeight, centre.x + halfWidth + 1,
                         centre.y + halfHeight + 1, scale),
          .outline = outline,
          .fill = fill,
          .radials = std::nullopt};
}

Shape Scaled(const Pie& pie, const PixelScale& scale) {
  const Box box = OnScreen(pie.box, scale);
  // From the centre of the scaled box, or rounding would tilt an upright line.
  const auto radial = [&, was = Centre(pie.box), is = Centre(box)](const Point& point) {
    return Point{.x = is.x + static_cast<int>(std::lround((point.x - was.x) * scale.x)),
                 .y = is.y + static_cast<int>(std::lround((point.y - was.y) * scale.y))};
  };
  return {.box = box,
          .outline = pie.fill,
          .fill = pie.fill,
          .radials = Radials{.from = radial(pie.from), .to = radial(pie.to)}};
}

}  // namespace

Box OnScreen(const Box& box, const PixelScale& scale) {
  return Rounded(box.left, box.top, box.right, box.bottom, scale);
}

Shape OnScreen(const Primitive& primitive, const PixelScale& scale) {
  return std::visit([&](const auto& drawn) { return Scaled(drawn, scale); }, primitive);
}

void DrawingList::Circle(Point centre, double radius, Colour outline, double aspect) {
  const double magnitude = std::fabs(aspect);
  const bool tall = magnitude >= 1;
  primitives_.emplace_back(Ellipse{
      .centre = centre,
      .halfWidth = tall ? radius / magnitude : radius,
      .halfHeight = tall ? radius : radius * magnitude,
      .outline = outline,
      .fill = fillStyle_ == FillStyle::Solid ? std::optional(fillColor_) : std::nullopt,
  });
}

}  // namespace forms
