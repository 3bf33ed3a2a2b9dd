#include "support/phases_stand_in.h"

#include <algorithm>

#include "astro/mMoon.h"

// All that astro/phases.cpp defines: with these definitions the linker leaves that file out.
namespace mMoon {

double Illumination = 0;
double YearPercent = 0;
double NewMoonJD = 0;
double FullMoonJD = 0;
std::int16_t WaningFlag = 0;

void FindPhases(std::int16_t year, double jd, double jdJan1) {
  using support::PhasesStandIn;
  const auto index = std::min(PhasesStandIn::calls.size(), PhasesStandIn::answers.size() - 1);
  const support::PhasesAnswer& answer = PhasesStandIn::answers.at(index);
  PhasesStandIn::calls.push_back({.year = year, .jd = jd, .jdJan1 = jdJan1, .centuries = Centuries});
  Illumination = answer.illumination;
  WaningFlag = answer.waning;
  NewMoonJD = answer.newMoon;
  FullMoonJD = answer.fullMoon;
}

}  // namespace mMoon
