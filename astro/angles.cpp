#include "astro/mMoon.h"
#include "runtime/checked.h"

namespace mMoon {

using runtime::Atn;
using runtime::Checked;
using runtime::CheckedCast;
using runtime::Int;
using runtime::Sqr;

double NormalizeAngle(double angle) {
  if (!(angle < 0) && !(angle > 360)) {
    return angle;
  }
  // On purpose the whole degrees are reduced through a division, which shows in the last bits.
  const auto n = CheckedCast<std::int32_t>(Int(angle));
  const Checked f = Checked(angle) - n;
  const Checked q = Checked(n) / 360;
  const auto m = CheckedCast<std::int32_t>(Int(q));
  return (q - m) * 360 + f;
}

double DegToRad(double angle) { return runtime::Tested((angle / 360 + angle / 360) * 3.1415926535); }

double ArcSine(double x) {
  const Checked s = Sqr(-Checked(x) * x + 1);
  const Checked t = Checked(x) / s;
  return Atn(DegToRad(t));
}

}  // namespace mMoon
