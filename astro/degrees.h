#pragma once

#include "astro/mMoon.h"
#include "runtime/checked.h"

namespace astro {

/// Sine, cosine, tangent of an angle in degrees, taken through DegToRad.
inline runtime::Checked SinDeg(double degrees) { return runtime::Sin(mMoon::DegToRad(degrees)); }
inline runtime::Checked CosDeg(double degrees) { return runtime::Cos(mMoon::DegToRad(degrees)); }
inline runtime::Checked TanDeg(double degrees) { return runtime::Tan(mMoon::DegToRad(degrees)); }

}  // namespace astro
