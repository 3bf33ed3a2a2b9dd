#include "support/phases_stand_in.h"

#include <algorithm>

#include "astro/mMoon.h"

// astro/phases.cpp defines nothing else, so the linker leaves that file out.
void mMoon::FindPhases(std::int16_t year, double jd, double jdJan1) {
  using support::PhasesStandIn;
  const auto index = std::min(PhasesStandIn::calls.size(), PhasesStandIn::answers.size() - 1);
  const support::PhasesAnswer& answer = PhasesStandIn::answers.at(index);
  PhasesStandIn::calls.push_back({.year = year, .jd = jd, .jdJan1 = jdJan1, .centuries = Centuries});
  Illumination = answer.illumination;
  WaningFlag = answer.waning;
  NewMoonJD = answer.newMoon;
  FullMoonJD = answer.fullMoon;
}
