#include "forms/drawing_list.h"

#include <cmath>

namespace forms {

bool Ellipse::operator==(const Ellipse& other) const {
  return Bounds() == other.Bounds() && outline == other.outline && fill == other.fill;
}

Box Ellipse::Bounds() const {
  const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
  return {.left = round(centre.x - halfWidth),
          .top = round(centre.y - halfHeight),
          .right = round(centre.x + halfWidth) + 1,
          .bottom = round(centre.y + halfHeight) + 1};
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
