#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The three periodic series of the Moon from Meeus, Astronomical Formulae for Calculators, ch. 30. The rows stand in
// the printed order and are added in that order, group by group. Rows that depart from the print are marked.

namespace astro {

/// One periodic term: coefficient * factor * wave(argument). The argument is the sum of the angles D, M, M' and F, each
/// times its multiple.
struct MoonTerm {
  double coefficient;        ///< degrees, as published
  std::int8_t D;             ///< multiple of the Moon's elongation
  std::int8_t M;             ///< multiple of the Sun's mean anomaly
  std::int8_t Mp;            ///< multiple of the Moon's mean anomaly M'
  std::int8_t F;             ///< multiple of the Moon's argument of latitude
  std::uint8_t E;            ///< power of the eccentricity factor
  bool unconverted = false;  ///< the wave is sin(D * elongation), with the degrees taken for radians
};

/// A series: its rows, and the end of each group of rows that is summed separately.
template <std::size_t Rows, std::size_t Groups>
struct MoonSeries {
  std::array<MoonTerm, Rows> terms;
  std::array<std::size_t, Groups> groupEnds;
};
template <std::size_t Rows, std::size_t Groups>
MoonSeries(std::array<MoonTerm, Rows>, std::array<std::size_t, Groups>) -> MoonSeries<Rows, Groups>;

/// Ecliptic longitude, sines.
inline constexpr MoonSeries kLongitudeSeries = {
    std::to_array<MoonTerm>({
        // clang-format off
    //          k,  D,  M, M',  F,  E
    {+6.28875,      0,  0,  1,  0,  0},
    {+1.274018,     2,  0, -1,  0,  0},
    {+0.658309,     2,  0,  0,  0,  0},
    {+0.213616,     0,  0,  2,  0,  0},
    {-0.185596,     0,  1,  0,  0,  1},
    {-0.114336,     0,  0,  0,  2,  0},

    {+0.058793,     2,  0, -2,  0,  0},
    {+0.057212,     2, -1, -1,  0,  1},
    {+0.05332,      2,  0,  1,  0,  0},
    {+0.045874,     2, -1,  0,  0,  1},
    {+0.041024,     0, -1,  1,  0,  1},
    {-0.034718,     1,  0,  0,  0,  0},
    {-0.030465,     0,  1,  1,  0,  1},

    {+0.015326,     2,  0,  0, -2,  0},
    {-0.012528,     0,  0,  1,  2,  0},
    {-0.01098,      0,  0, -1,  2,  0},
    {+0.010674,     4,  0, -1,  0,  0},
    {+0.010034,     0,  0,  3,  0,  0},
    {+0.008548,     4,  0, -2,  0,  0},
    {-0.00791,      2,  1, -1,  0,  1},
    {-0.006783,     2,  1,  0,  0,  1},
    {+0.005162,    -1,  0,  1,  0,  0},

    {+0.005,        1,  1,  0,  0,  1},
    {+0.004049,     2, -1,  1,  0,  1},
    {+0.003996,     2,  0,  2,  0,  0},
    {+0.003862,     4,  0,  0,  0,  0, true},  // on purpose: 4D is not converted to radians
    {+0.003665,     2,  0, -3,  0,  0},
    {+0.002695,     0, -1,  2,  0,  1},
    {+0.002602,    -2,  0,  1, -2,  0},
    {+0.002396,     2, -1, -2,  0,  1},
    {-0.002349,     1,  0,  1,  0,  0},

    {+0.002249,     2, -2,  0,  0,  2},
    {-0.002125,     0,  1,  2,  0,  1},
    {-0.002079,     0,  2,  0,  0,  2},
    {+0.002059,     2, -2, -1,  0,  2},
    {-0.001773,     2,  0,  1, -2,  0},
    {-0.001595,     2,  0,  0,  2,  0},
    {+0.00122,      4, -1, -1,  0,  1},
    {-0.00111,      0,  0,  2,  2,  0},
    {+0.000892,    -3,  0,  1,  0,  0},

    {-0.000811,     0,  3,  1,  0,  1},  // on purpose; printed as 2D + M + M'
    {+0.000761,     4, -1, -2,  0,  1},
    {+0.000717,     0, -2,  1,  0,  2},
    {+0.000704,    -2, -2,  1,  0,  2},
    {+0.000693,     2,  1, -2,  0,  1},
    {+0.000598,     2, -1,  0, -2,  1},
    {+0.00055,      4,  0,  1,  0,  0},
    {+0.000538,     0,  0,  4,  0,  0},
    {+0.000521,     4, -1,  0,  0,  1},
    {+0.000486,    -1,  0,  2,  0,  0},
        // clang-format on
    }),
    std::to_array<std::size_t>({6, 13, 22, 31, 40, 50})};

/// Ecliptic latitude before its node factor, sines.
inline constexpr MoonSeries kLatitudeSeries = {
    std::to_array<MoonTerm>({
        // clang-format off
    //          k,  D,  M, M',  F,  E
    {+5.128189,     0,  0,  0,  1,  0},
    {+0.280606,     0,  0,  1,  1,  0},
    {+0.277693,     0,  0,  1, -1,  0},
    {+0.173238,     2,  0,  0, -1,  0},
    {+0.055413,     2,  0, -1,  1,  0},
    {+0.046272,     2,  0, -1, -1,  0},
    {+0.032573,     2,  0,  0,  1,  0},
    {+0.017198,     0,  0,  2,  1,  0},
    {+0.009267,     2,  0,  1, -1,  0},
    {+0.008823,     0,  0,  2, -1,  0},

    {+0.008247,     2, -1,  0, -1,  1},
    {+0.004323,     2,  0, -2, -1,  0},
    {+0.0042,       2,  0,  1,  1,  0},
    {+0.003372,    -2, -1,  0,  1,  1},
    {+0.002472,     2, -1, -1,  1,  1},
    {+0.002222,     2, -1,  0,  1,  1},
    {+0.002072,     2, -1, -1, -1,  1},

    {+0.001877,     0, -1,  1,  1,  1},
    {+0.001828,     4,  0, -1, -1,  0},
    {-0.001803,     0,  1,  0,  1,  1},
    {-0.00175,      0,  0,  0,  3,  0},
    {+0.00157,      0, -1,  1, -1,  1},
    {-0.001487,     1,  0,  0,  1,  0},
    {-0.001481,     0,  1,  1,  1,  1},
    {+0.001417,     0, -1, -1,  1,  1},

    {+0.00135,      0, -1,  0,  1,  1},
    {+0.00133,     -1,  0,  0,  1,  0},
    {+0.001106,     0,  0,  3,  1,  0},
    {+0.00102,      4,  0,  0, -1,  0},
    {+0.000833,     4,  0, -1,  1,  0},
    {+0.000781,     0,  0,  1, -3,  0},
    {+0.00067,      4,  0, -2,  1,  0},
    {+0.000606,     2,  0,  0, -3,  0},

    {+0.000597,     2,  0,  2, -1,  0},
    {+0.000492,     2, -1,  1, -1,  1},
    {+0.00045,     -2,  0,  2, -1,  0},
    {+0.000439,     0,  0,  3, -1,  0},
    {+0.000423,     2,  0,  2,  1,  0},
    {+0.000422,     2,  0, -3, -1,  0},
    {-0.000367,     2,  1, -1,  1,  1},
    {-0.000353,     2,  1,  0,  1,  1},
    {+0.000331,     4,  0,  0,  1,  0},

    {+0.000317,     2, -1,  1,  1,  1},
    {+0.000306,     2, -2,  0, -1,  2},
    {-0.000283,     0,  0,  1,  3,  0},
        // clang-format on
    }),
    std::to_array<std::size_t>({10, 17, 25, 33, 42, 45})};

/// Equatorial horizontal parallax beyond its constant, cosines.
inline constexpr MoonSeries kParallaxSeries = {
    std::to_array<MoonTerm>({
        // clang-format off
    //          k,  D,  M, M',  F,  E
    {+0.051818,     0,  0,  1,  0,  0},
    {+0.009531,     2,  0, -1,  0,  0},
    {+0.007843,     2,  0,  0,  0,  0},
    {+0.002824,     0,  0,  2,  0,  0},
    {+0.000857,     2,  0,  1,  0,  0},
    {+0.000533,     2, -1,  0,  0,  1},
    {+0.000401,     2, -1, -1,  0,  1},

    {+0.00032,      0, -1,  1,  0,  1},
    {-0.000271,     1,  0,  0,  0,  0},
    {-0.000264,     0,  1,  1,  0,  1},
    {-0.000198,     0,  0, -1,  2,  0},
    {+0.000173,     0,  0,  3,  0,  0},
    {+0.000167,     4,  0, -1,  0,  0},
    {-0.000111,     0,  1,  0,  0,  1},
    {+0.000103,     4,  0, -2,  0,  0},

    {-0.000084,    -2,  0,  2,  0,  0},
    {-0.000083,     2,  1,  0,  0,  1},
    {+0.000079,     2,  0,  2,  0,  0},
    {+0.000072,     4,  0,  0,  0,  0},
    {+0.000064,     2, -1,  1,  0,  1},
    {-0.000063,     2,  1, -1,  0,  1},
    {+0.000041,     1,  1,  0,  0,  1},
    {+0.000035,     0, -1,  2,  0,  1},

    {-0.000033,    -2,  0,  3,  0,  0},
    {-0.00003,      1,  0,  1,  0,  0},
    {-0.000029,    -2,  0,  0,  2,  0},
    {-0.000029,     0,  1,  2,  0,  1},
    {+0.000026,     2,  0, -2,  0,  2},  // on purpose; printed as 2D - 2M
    {-0.000023,    -2,  0,  1,  2,  0},
    {+0.000019,     4, -1, -1,  0,  1},
        // clang-format on
    }),
    std::to_array<std::size_t>({7, 15, 23, 30})};

static_assert(kLongitudeSeries.terms.size() == 50 && kLongitudeSeries.groupEnds.back() == 50);
static_assert(kLatitudeSeries.terms.size() == 45 && kLatitudeSeries.groupEnds.back() == 45);
static_assert(kParallaxSeries.terms.size() == 30 && kParallaxSeries.groupEnds.back() == 30);

}  // namespace astro
