#include "forms/drawing_list_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "support/pixels_win.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&Ellipse) ellipseSlot asm("__imp__Ellipse@20");
extern "C" decltype(&FillRect) fillRectSlot asm("__imp__FillRect@12");
extern "C" decltype(&IntersectClipRect) intersectClipRectSlot asm("__imp__IntersectClipRect@20");
extern "C" decltype(&SelectObject) selectObjectSlot asm("__imp__SelectObject@8");

namespace {

constexpr int kRadius = 65;
constexpr forms::Point kCentre = {.x = 75, .y = 75};
constexpr COLORREF kGround = 0x808080;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kBlack = 0;
constexpr COLORREF kRed = 0xFF;

forms::DrawingList Drawn(COLORREF outline, COLORREF fill, double aspect = 1) {
  forms::DrawingList drawing;
  drawing.SetFillStyle(forms::FillStyle::Solid);
  drawing.SetFillColor(fill);
  drawing.Circle(kCentre, kRadius, outline, aspect);
  return drawing;
}

/// A drawing on a grey ground.
class Painted {
 public:
  explicit Painted(const forms::DrawingList& drawing, double scale = 1)
      : scale_(scale), pixels_(static_cast<int>(150 * scale), static_cast<int>(150 * scale)) {
    const RECT all = {.left = 0, .top = 0, .right = pixels_.Width(), .bottom = pixels_.Height()};
    SetDCBrushColor(pixels_.dc(), kGround);
    FillRect(pixels_.dc(), &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    EXPECT_TRUE(forms::Replay(pixels_.dc(), drawing.Primitives(), {.x = scale, .y = scale}));
  }

  /// The row of pixels through the centre: # black, . white, r red, blank the ground.
  [[nodiscard]] std::string Row() const {
    std::string row;
    for (int x = 0; x < pixels_.Width(); ++x) {
      const COLORREF colour = pixels_.At(x, static_cast<int>(OnScreen(kCentre.y)));
      row += colour == kBlack ? '#' : colour == kWhite ? '.' : colour == kRed ? 'r' : colour == kGround ? ' ' : '?';
    }
    return row;
  }

  /// Compares all pixels with an ellipse around the centre. Its edge may be a pixel off, but must have no gap.
  void ExpectEllipse(double halfWidth, double halfHeight, COLORREF outline, COLORREF fill) const {
    const auto inside = [&](double right, double down) {
      return std::hypot(right / OnScreen(halfWidth), down / OnScreen(halfHeight)) <= 1;
    };
    const bool rowByRow = outline == fill && 2 * OnScreen(halfWidth) < 8;
    const double tolerance = rowByRow ? 1 : 1.5 * scale_;
    int wrong = 0;
    int gaps = 0;
    for (int y = 1; y < pixels_.Height() - 1; ++y) {
      for (int x = 1; x < pixels_.Width() - 1; ++x) {
        const COLORREF colour = pixels_.At(x, y);
        const double right = std::fabs(x - OnScreen(kCentre.x));
        const double down = std::fabs(y - OnScreen(kCentre.y));
        const bool mayBeInside = inside(std::max(right - tolerance, 0.0), std::max(down - tolerance, 0.0));
        const bool mayBeOutside = !inside(right + tolerance, down + tolerance);
        wrong += (colour == fill && mayBeInside) || (colour == kGround && mayBeOutside) ||
                         (colour == outline && mayBeInside && mayBeOutside)
                     ? 0
                     : 1;
        gaps += colour != kGround && colour != outline && BesideTheGround(x, y) ? 1 : 0;
      }
    }
    EXPECT_EQ(wrong, 0) << "pixels of a wrong colour";
    EXPECT_EQ(gaps, 0) << "gaps in the outline";
  }

 private:
  [[nodiscard]] double OnScreen(double place) const { return (place + 0.5) * scale_ - 0.5; }

  [[nodiscard]] bool BesideTheGround(int x, int y) const {
    return pixels_.At(x - 1, y) == kGround || pixels_.At(x + 1, y) == kGround || pixels_.At(x, y - 1) == kGround ||
           pixels_.At(x, y + 1) == kGround;
  }

  double scale_;
  Pixels pixels_;
};

std::string Repeated(int length, char letter) { return std::string(static_cast<std::size_t>(length), letter); }

TEST(Replay, PaintsEllipsesOfEveryWidth) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    for (double halfWidth = 0.01; halfWidth <= kRadius; halfWidth *= 1.3) {
      const double aspect = kRadius / halfWidth;
      SCOPED_TRACE(testing::Message() << halfWidth << ", scale " << scale);
      Painted(Drawn(kBlack, kBlack, aspect), scale).ExpectEllipse(halfWidth, kRadius, kBlack, kBlack);
      if (halfWidth > 5) {
        Painted(Drawn(kRed, kWhite, aspect), scale).ExpectEllipse(halfWidth, kRadius, kRed, kWhite);
        Painted(Drawn(kRed, kWhite, 1 / aspect), scale).ExpectEllipse(kRadius, halfWidth, kRed, kWhite);
      }
    }
  }
}

/// Otherwise the terminator of a quarter would be missing.
TEST(Replay, PaintsAnEllipseWithoutAnInsideAsALine) {
  EXPECT_EQ(Painted(Drawn(kBlack, kBlack, 50'000)).Row(), Repeated(75, ' ') + "#" + Repeated(74, ' '));
}

TEST(Replay, ScalesTheWidthOfAnOutline) {
  EXPECT_EQ(Painted(Drawn(kRed, kWhite)).Row(), Repeated(10, ' ') + "r" + Repeated(129, '.') + "r" + Repeated(9, ' '));
  EXPECT_EQ(Painted(Drawn(kRed, kWhite), 2).Row(),
            Repeated(20, ' ') + "rr" + Repeated(258, '.') + "rr" + Repeated(18, ' '));
}

const auto systemsEllipse = ellipseSlot;

BOOL WINAPI LookAtTheEllipse(HDC dc, int left, int top, int right, int bottom) {
  EXPECT_GE(right - left, 10);
  RECT clip{};
  GetClipBox(dc, &clip);
  EXPECT_TRUE(clip.left >= left && clip.top >= top && clip.right <= right && clip.bottom <= bottom);
  return systemsEllipse(dc, left, top, right, bottom);
}

/// Wine paints stray pixels for an ellipse a few pixels wide, also beside its box, and not always the same ones.
TEST(Replay, LeavesNoNarrowEllipseToTheSystemAndClipsTheOthers) {
  const SystemStandIn standIn(ellipseSlot, &LookAtTheEllipse);
  for (int aspect = 1; aspect < 40; ++aspect) {
    Painted(Drawn(kBlack, kBlack, aspect));
  }
}

const auto systemsFillRect = fillRectSlot;

/// Windows does not document what FillRect returns for an empty rectangle: it may be a failure.
int WINAPI RefuseEmptyRectangles(HDC dc, const RECT* place, HBRUSH brush) {
  return place->left < place->right ? systemsFillRect(dc, place, brush) : 0;
}

TEST(Replay, FillsNoEmptyRows) {
  const Pixels pixels(300, 300);
  const SystemStandIn standIn(fillRectSlot, &RefuseEmptyRectangles);
  EXPECT_TRUE(forms::Replay(pixels.dc(), Drawn(kBlack, kBlack, 50'000).Primitives(), {.x = 2, .y = 2}));
}

/// Refuses each call that a painting makes to this function: one call per painting.
template <auto& Slot, auto Answer>
void RefuseEach() {
  forms::DrawingList drawing = Drawn(kWhite, kBlack);
  drawing.Circle(kCentre, kRadius, kBlack, 50'000);
  drawing.SetFillStyle(forms::FillStyle::Transparent);
  drawing.Circle(kCentre, kRadius, kBlack);
  const Pixels pixels(300, 300);
  for (int call = 0;; ++call) {
    const Refused<Slot, Answer> refused(call);
    const bool whole = forms::Replay(pixels.dc(), drawing.Primitives(), {.x = 2, .y = 2});
    if (!refused.Happened()) {
      EXPECT_TRUE(whole);
      EXPECT_GT(call, 0) << "the painting does not call it";
      break;
    }
    EXPECT_FALSE(whole) << "call " << call;
  }
}

TEST(Replay, ReportsThatTheSystemRefusedACall) {
  RefuseEach<ellipseSlot, FALSE>();
  RefuseEach<fillRectSlot, 0>();
  RefuseEach<intersectClipRectSlot, ERROR>();
  RefuseEach<selectObjectSlot, nullptr>();
}

}  // namespace
