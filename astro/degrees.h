#pragma once

#include "astro/checked.h"
#include "astro/mMoon.h"

namespace mMoon {

/// Sine, cosine, tangent of an angle in degrees, taken through DegToRad.
inline Checked SinDeg(double degrees) { return Sin(DegToRad(degrees)); }
inline Checked CosDeg(double degrees) { return Cos(DegToRad(degrees)); }
inline Checked TanDeg(double degrees) { return Tan(DegToRad(degrees)); }

}  // namespace mMoon
