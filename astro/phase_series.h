#pragma once

#include <array>
#include <cstdint>

namespace astro {

/// One periodic correction of a phase instant: (coefficient + perT * T) * sin(argument). The argument is the sum of the
/// angles M, M' and F, each times its multiple.
struct PhaseTerm {
  double coefficient;  ///< days
  double perT;         ///< days a century
  std::int8_t M;       ///< multiple of the Sun's mean anomaly
  std::int8_t Mp;      ///< multiple of the Moon's mean anomaly M'
  std::int8_t F;       ///< multiple of the Moon's argument of latitude
};

/// The corrections of New and Full Moon, in the order in which they are added (Meeus, Astronomical Formulae for
/// Calculators, ch. 32).
inline constexpr auto kPhaseSeries = std::to_array<PhaseTerm>({
    // clang-format off
    //     k,      per T,  M, M',  F
    {+0.1734, -0.000393,   1,  0,  0},
    {+0.0021,  0,          2,  0,  0},
    {-0.4068,  0,          0,  1,  0},
    {+0.0161,  0,          0,  2,  0},
    {-0.0004,  0,          0,  3,  0},
    {+0.0104,  0,          0,  0,  2},
    {-0.0051,  0,          1,  1,  0},
    {-0.0074,  0,          1, -1,  0},
    {+0.0004,  0,          1,  0,  2},
    {-0.0004,  0,          0, -1,  2},  // on purpose; printed as 2F - M
    {-0.0006,  0,          0,  1,  2},
    {+0.0010,  0,          0, -1,  2},
    {+0.0005,  0,          1,  2,  0},
    // clang-format on
});
static_assert(kPhaseSeries.size() == 13);

}  // namespace astro
