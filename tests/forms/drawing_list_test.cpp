#include "forms/drawing_list.h"

#include <gtest/gtest.h>

#include <variant>

namespace forms {

namespace {

constexpr Colour kWhite = 16777215;
constexpr Point kCentre = {.x = 125, .y = 85};

Ellipse Drawn(double aspect, FillStyle style = FillStyle::Solid) {
  DrawingList list;
  list.SetFillStyle(style);
  list.SetFillColor(kWhite);
  list.Circle(kCentre, 65, 255, aspect);
  return std::get<Ellipse>(list.Primitives().at(0));
}

}  // namespace

TEST(DrawingList, FillIsTransparentUntilItIsSet) {
  DrawingList list;
  list.Circle(kCentre, 65, kWhite);
  EXPECT_EQ(std::get<Ellipse>(list.Primitives().at(0)).fill, std::nullopt);
}

TEST(DrawingList, ClsForgetsPrimitivesButKeepsTheStyles) {
  DrawingList list;
  list.SetFillStyle(FillStyle::Solid);
  list.SetFillColor(7);
  list.SetForeColor(255);
  list.Circle(kCentre, 1, 0);
  list.Cls();
  EXPECT_TRUE(list.Primitives().empty());
  EXPECT_EQ(list.ForeColor(), 255U);
  list.Circle(kCentre, 1, 0);
  EXPECT_EQ(std::get<Ellipse>(list.Primitives().at(0)).fill, 7U);
}

TEST(OnScreen, AnEllipseIncludesThePixelsOfItsOutline) {
  EXPECT_EQ(OnScreen(Drawn(1), {}).box, (Box{.left = 60, .top = 20, .right = 191, .bottom = 151}));
  EXPECT_EQ(OnScreen(Drawn(50000), {}).box, (Box{.left = 125, .top = 20, .right = 126, .bottom = 151}));
  EXPECT_EQ(OnScreen(Drawn(2), {}).box, (Box{.left = 93, .top = 20, .right = 159, .bottom = 151}));
}

TEST(OnScreen, AnEllipseIsScaledBeforeItIsRounded) {
  // Half-axes of 32.5 and 65 around the middle of pixel (125, 85): the edges are 33 and 65.5 away from it.
  EXPECT_EQ(OnScreen(Drawn(2), {.x = 1.25, .y = 1.25}).box, (Box{.left = 116, .top = 25, .right = 198, .bottom = 189}));
  EXPECT_EQ(OnScreen(Drawn(2), {.x = 1.5, .y = 1.5}).box, (Box{.left = 139, .top = 30, .right = 238, .bottom = 227}));
  EXPECT_EQ(OnScreen(Drawn(2), {.x = 2, .y = 2}).box, (Box{.left = 185, .top = 40, .right = 317, .bottom = 302}));
  EXPECT_EQ(OnScreen(Drawn(2), {.x = 2, .y = 1}).box, (Box{.left = 185, .top = 20, .right = 317, .bottom = 151}));
}

TEST(OnScreen, AnEllipseKeepsItsColours) {
  EXPECT_EQ(OnScreen(Drawn(1), {}).outline, 255U);
  EXPECT_EQ(OnScreen(Drawn(1), {}).fill, kWhite);
  EXPECT_EQ(OnScreen(Drawn(1, FillStyle::Transparent), {}).fill, std::nullopt);
  EXPECT_EQ(OnScreen(Drawn(1), {}).radials, std::nullopt);
}

TEST(OnScreen, APieIsCutStraightAtAnyScale) {
  const Pie half = {.box = {60, 20, 191, 151}, .from = {125, 0}, .to = {125, 150}, .fill = 9};
  const Shape same = OnScreen(half, {});
  EXPECT_EQ(same,
            (Shape{.box = half.box, .outline = 9, .fill = 9, .radials = Radials{.from = half.from, .to = half.to}}));
  for (const double scale : {1.25, 1.5, 2.0}) {
    const Shape shape = OnScreen(half, {.x = scale, .y = scale});
    EXPECT_EQ(shape.box, OnScreen(Drawn(1), {.x = scale, .y = scale}).box) << "the disc's own box";
    const int middle = (shape.box.left + shape.box.right) / 2;
    EXPECT_EQ(shape.radials.value().from.x, middle);
    EXPECT_EQ(shape.radials.value().to.x, middle);
    EXPECT_LT(shape.radials.value().from.y, shape.box.top);
    EXPECT_GT(shape.radials.value().to.y, shape.box.bottom - 2 * scale);
  }
}

}  // namespace forms
