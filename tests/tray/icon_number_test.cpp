#include "tray/icon_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace tidewell {

using namespace mMoon;

// The published thresholds: an icon shows for values above its own.
TEST(PhaseToIconNumber, ClimbsItsIrregularLadder) {
  const std::vector<std::pair<double, int>> ladder = {
      {198.22, 28}, {194.27, 27}, {188.2, 26},  {180.56, 25}, {171.0, 24}, {161.0, 23},  {150.58, 22},
      {140.0, 21},  {129.61, 20}, {120.87, 19}, {112.81, 18}, {106.6, 17}, {102.36, 16}, {100.238, 15},
      {99.66, 14},  {97.44, 13},  {93.18, 12},  {86.89, 11},  {78.75, 10}, {69.96, 9},   {59.4, 8},
      {48.87, 7},   {38.43, 6},   {28.13, 5},   {19.31, 4},   {11.2, 3},   {5.68, 2},    {1.73, 1}};
  for (const auto& [threshold, icon] : ladder) {
    PhaseToIconNumber(std::nextafter(threshold, 1000));
    EXPECT_EQ(IconNumber, icon) << threshold;
    EXPECT_EQ(IcoNumFromIconNumber(), icon);
    PhaseToIconNumber(threshold);
    EXPECT_EQ(IconNumber, icon - 1) << threshold;
    EXPECT_EQ(IcoNumFromIconNumber(), icon - 1);
  }
}

TEST(PhaseToIconNumber, GivesTheEndsOfTheScale) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const auto& [value, icon] :
       {std::pair{0.0, 0}, {100.0, 14}, {200.0, 28}, {-5.0, 0}, {1e300, 28}, {infinity, 28}, {-infinity, 0}}) {
    PhaseToIconNumber(value);
    EXPECT_EQ(IconNumber, icon) << value;
  }
  PhaseToIconNumber(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(IconNumber, 0);
}

}  // namespace tidewell
