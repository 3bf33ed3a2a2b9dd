// Compares each pixel of the phase picture with the geometry of its primitives, in the real main window.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <variant>
#include <vector>

#include "forms/drawing_list.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "support/window_pixels_win.h"

extern "C" decltype(&Ellipse) ellipseSlot asm("__imp__Ellipse@20");

namespace {

constexpr int kCentreX = 125;
constexpr int kCentreY = 85;
constexpr int kRadius = 65;

/// The colours that a pixel may have.
enum Colours : unsigned { kNone = 0, kFace = 1, kWhite = 2, kBlack = 4, kOther = 8 };

unsigned ColourOf(COLORREF colour) {
  return colour == 0xFFFFFF ? kWhite : colour == 0 ? kBlack : colour == GetSysColor(COLOR_3DFACE) ? kFace : kOther;
}

/// How far from the middle a row's pixels are surely inside an ellipse, and how far they may be. Its edge is one pixel
/// wide and may run one pixel off.
struct Reach {
  double inner, outer;
};

Reach ReachOf(double halfWidth, double halfHeight, int row) {
  constexpr double kPenAndTolerance = 1.5;
  constexpr double kStep = 0.125;
  Reach reach = {.inner = halfWidth, .outer = -1};
  for (double down = -kPenAndTolerance; down <= kPenAndTolerance; down += kStep) {
    const double across = std::sqrt(kPenAndTolerance * kPenAndTolerance - down * down);
    const double height = (row + down) / halfHeight;
    if (std::fabs(height) > 1) {
      reach.inner = -1;
    } else {
      const double edge = halfWidth * std::sqrt(1 - height * height);
      reach.inner = std::min(reach.inner, edge - across);
      reach.outer = std::max(reach.outer, edge + across);
    }
  }
  return reach;
}

/// The colours that each pixel in a row of the disc may have.
class Row {
 public:
  explicit Row(int y) : y_(y) { colours_.fill(kFace); }

  void operator()(const forms::Ellipse& ellipse) {
    const Reach reach = ReachOf(ellipse.halfWidth, ellipse.halfHeight, y_ - ellipse.centre.y);
    for (int x = -kRadius; x <= kRadius; ++x) {
      unsigned& colours = At(kCentreX + x);
      const unsigned fill = ellipse.fill ? ColourOf(*ellipse.fill) : colours;
      if (std::abs(x) < reach.inner) {
        colours = fill;
      } else if (std::abs(x) <= reach.outer) {
        colours |= fill | ColourOf(ellipse.outline);
      }
    }
  }

  /// Half the disc.
  void operator()(const forms::Pie& pie) {
    const Reach reach = ReachOf(kRadius, kRadius, y_ - kCentreY);
    const bool left = pie.from.y < pie.to.y;  // counter-clockwise from the top to the bottom
    for (int x = -kRadius; x <= kRadius; ++x) {
      unsigned& colours = At(kCentreX + x);
      const int depth = left ? -x : x;
      if (depth > 1 && std::abs(x) < reach.inner) {
        colours = ColourOf(pie.fill);
      } else if (depth >= -1 && std::abs(x) <= reach.outer) {
        colours |= ColourOf(pie.fill);
      }
    }
  }

  unsigned& At(int x) { return colours_.at(static_cast<std::size_t>(x - kCentreX + kRadius)); }

 private:
  int y_;
  std::array<unsigned, 2 * kRadius + 1> colours_;
};

class PictureGeometry : public ShownMoon {
 protected:
  /// Paints the window and checks its pixels above the labels.
  void Look() {
    const std::vector<forms::Primitive> primitives = form().Drawing().Primitives();
    UpdateWindow(form().hwnd());
    const WindowPixels pixels(form().hwnd());
    int wrong = 0;
    int stray = 0;
    for (int y = 0; y < 165; ++y) {
      Row row(y);
      for (const forms::Primitive& primitive : primitives) {
        std::visit(row, primitive);
      }
      for (int x = 0; x < pixels.Width(); ++x) {
        const unsigned colour = ColourOf(pixels.At(x, y));
        if (std::abs(x - kCentreX) > kRadius || std::abs(y - kCentreY) > kRadius) {
          stray += colour == kFace ? 0 : 1;
        } else {
          wrong += (colour & row.At(x)) != 0 ? 0 : 1;
        }
      }
    }
    EXPECT_EQ(wrong, 0) << "pixels of a wrong colour";
    EXPECT_EQ(stray, 0) << "pixels outside the square of the disc";
    EXPECT_EQ(GapsInTheRim(pixels), 0);
  }

 private:
  /// The number of directions without a black pixel within a pixel of the rim.
  static int GapsInTheRim(const WindowPixels& pixels) {
    constexpr int kDirections = 720;
    int gaps = 0;
    for (int i = 0; i < kDirections; ++i) {
      const double direction = i * 2 * std::numbers::pi / kDirections;
      const double rimX = kCentreX + kRadius * std::cos(direction);
      const double rimY = kCentreY + kRadius * std::sin(direction);
      bool found = false;
      for (int x = static_cast<int>(std::ceil(rimX - 1)); x <= rimX + 1; ++x) {
        for (int y = static_cast<int>(std::ceil(rimY - 1)); y <= rimY + 1; ++y) {
          found |= std::hypot(x - rimX, y - rimY) <= 1 && ColourOf(pixels.At(x, y)) == kBlack;
        }
      }
      gaps += found ? 0 : 1;
    }
    return gaps;
  }
};

TEST_F(PictureGeometry, HoldsOverTwoLunations) {
  constexpr int kInstants = 200;
  constexpr double kTwoLunations = 59.06;
  const runtime::DateValue start = now;
  for (int i = 0; i < kInstants; ++i) {
    now = start + i * kTwoLunations / kInstants;
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    SCOPED_TRACE(now);
    Look();
  }
  now = start;
}

const auto theSystems = ellipseSlot;

BOOL WINAPI LookAtTheEllipse(HDC dc, int left, int top, int right, int bottom) {
  EXPECT_GE(right - left, 10);
  RECT clip{};
  GetClipBox(dc, &clip);
  EXPECT_TRUE(clip.left >= left && clip.top >= top && clip.right <= right && clip.bottom <= bottom);
  return theSystems(dc, left, top, right, bottom);
}

/// For an ellipse a few pixels wide Wine paints stray pixels, also beside its box, and not always the same ones. The
/// program draws such an ellipse itself and clips any other to its box.
TEST_F(PictureGeometry, HoldsAroundTheQuarters) {
  const SystemStandIn standIn(ellipseSlot, &LookAtTheEllipse);
  for (int thousandth = 450; thousandth <= 550; ++thousandth) {
    double fraction = thousandth / 1000.0;
    auto waning = static_cast<std::int16_t>(thousandth % 2);
    SCOPED_TRACE(fraction);
    mMoon::DrawMoonPhase(form(), fraction, waning);
    Repaint();
    Look();
  }
}

}  // namespace
