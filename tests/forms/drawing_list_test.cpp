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

TEST(DrawingList, CircleIsOutlinedAndFilled) {
  const Ellipse want = {.centre = kCentre, .halfWidth = 65, .halfHeight = 65, .outline = 255, .fill = kWhite};
  EXPECT_EQ(Drawn(1), want);
}

TEST(DrawingList, TransparentCircleHasNoFill) { EXPECT_EQ(Drawn(1, FillStyle::Transparent).fill, std::nullopt); }

TEST(DrawingList, FillIsTransparentUntilItIsSet) {
  DrawingList list;
  list.Circle(kCentre, 65, kWhite);
  EXPECT_EQ(std::get<Ellipse>(list.Primitives().at(0)).fill, std::nullopt);
}

TEST(DrawingList, RadiusIsTheLargerHalfAxis) {
  EXPECT_EQ(Drawn(2).halfHeight, 65);
  EXPECT_EQ(Drawn(2).halfWidth, 32.5);
  EXPECT_EQ(Drawn(0.5).halfHeight, 32.5);
  EXPECT_EQ(Drawn(0.5).halfWidth, 65);
}

TEST(DrawingList, OfANegativeAspectTheMagnitudeCounts) {
  EXPECT_EQ(Drawn(-2), Drawn(2));
  EXPECT_EQ(Drawn(-0.5), Drawn(0.5));
}

TEST(DrawingList, KeepsPrimitivesInTheOrderOfDrawing) {
  DrawingList list;
  const Pie pie = {.box = {1, 2, 3, 4}, .from = {5, 6}, .to = {7, 8}, .fill = 9};
  list.Circle(kCentre, 1, 0);
  list.DrawPie(pie);
  ASSERT_EQ(list.Primitives().size(), 2U);
  EXPECT_TRUE(std::holds_alternative<Ellipse>(list.Primitives().at(0)));
  EXPECT_EQ(std::get<Pie>(list.Primitives().at(1)), pie);
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

TEST(DrawingList, BoundsCoverThePixelsOfTheOutline) {
  EXPECT_EQ(Drawn(1).Bounds(), (Box{.left = 60, .top = 20, .right = 191, .bottom = 151}));
  EXPECT_EQ(Drawn(50000).Bounds(), (Box{.left = 125, .top = 20, .right = 126, .bottom = 151}));
  EXPECT_EQ(Drawn(2).Bounds(), (Box{.left = 93, .top = 20, .right = 159, .bottom = 151}));
}

}  // namespace forms
