#include "astro/degrees.h"
#include "astro/mMoon.h"
#include "astro/moon_series.h"
#include "astro/obliquity.h"

namespace mMoon {

double MoonMeanLongitude = 0;
double MoonMeanAnomaly = 0;
double MoonElongation = 0;
double MoonArgLatitude = 0;
double MoonNodeLongitude = 0;
double MoonLongitude = 0;
double MoonLatitude = 0;
double MoonParallax = 0;
double MoonRightAscension = 0;
double MoonDeclination = 0;

namespace {

/// A fundamental argument in degrees: constant + perT * T + perT2 * T^2 + perT3 * T^3.
struct FundamentalArgument {
  double constant, perT, perT2, perT3;

  [[nodiscard]] Checked At(Checked T) const { return constant + perT * T + perT2 * Pow(T, 2) + perT3 * Pow(T, 3); }
};

constexpr FundamentalArgument kMeanLongitude = {270.434164, 481267.8831, -0.001133, 0.0000019};
constexpr FundamentalArgument kMeanAnomaly = {296.104608, 477198.8491, 0.009192, 0.0000144};
constexpr FundamentalArgument kElongation = {350.737486, 445267.1142, -0.001436, 0.0000019};
constexpr FundamentalArgument kArgLatitude = {11.250889, 483202.0251, -0.003211, -0.0000003};
constexpr FundamentalArgument kNodeLongitude = {259.183275, -1934.142, 0.002078, 0.0000022};

/// 275.05 - 2.3 T, the angle that goes with the node's longitude in F and in the latitude, degrees.
Checked NodeCompanion(Checked T) { return 275.05 - 2.3 * T; }

void ComputeFundamentalArguments(Checked T) {
  MoonMeanLongitude = kMeanLongitude.At(T);
  MoonMeanAnomaly = kMeanAnomaly.At(T);
  MoonElongation = kElongation.At(T);
  MoonArgLatitude = kArgLatitude.At(T);
  MoonNodeLongitude = kNodeLongitude.At(T);

  const Checked sinA = SinDeg(51.2 + 20.2 * T);
  Add(MoonMeanLongitude, 0.000233 * sinA);
  Add(SunMeanAnomaly, -0.001778 * sinA);
  Add(MoonMeanAnomaly, 0.000817 * sinA);
  Add(MoonElongation, 0.002011 * sinA);

  // The T^2 part of the Venus term is subtracted behind the conversion, in radians, on purpose.
  const Checked venus = 0.003964 * Sin(DegToRad(346.56 + 132.87 * T) - 0.0091731 * Pow(T, 2));
  Add(MoonMeanLongitude, venus);
  Add(MoonMeanAnomaly, venus);
  Add(MoonElongation, venus);
  Add(MoonArgLatitude, venus);

  const Checked node = MoonNodeLongitude;
  const Checked sinNode = SinDeg(node);
  Add(MoonMeanLongitude, 0.001964 * sinNode);
  Add(MoonMeanAnomaly, 0.002541 * sinNode);
  Add(MoonElongation, 0.001964 * sinNode);
  Add(MoonArgLatitude, -0.024691 * sinNode);
  Add(MoonArgLatitude, -0.004328 * SinDeg(node + NodeCompanion(T)));

  // The elongation and the argument of latitude are left unreduced on purpose: the longitude's unconverted row takes
  // the elongation as it stands.
  MoonMeanLongitude = NormalizeAngle(MoonMeanLongitude);
  MoonMeanAnomaly = NormalizeAngle(MoonMeanAnomaly);
  MoonNodeLongitude = NormalizeAngle(MoonNodeLongitude);
}

/// Adds a series to its start, group by group: each group is summed by itself, then added.
template <std::size_t Rows, std::size_t Groups>
Checked AddSeries(double start, const MoonSeries<Rows, Groups>& series, Checked wave(Checked), Checked T) {
  const Checked E = 1 - 0.002495 * T - 0.00000752 * Pow(T, 2);
  const std::array<Checked, 3> powersOfE = {1, E, Pow(E, 2)};
  Checked sum = start;
  std::size_t row = 0;
  for (const std::size_t groupEnd : series.groupEnds) {
    Checked group = 0;
    for (; row < groupEnd; ++row) {
      const MoonTerm& term = series.terms.at(row);
      const Checked argument = term.D * Checked(MoonElongation) + term.M * Checked(SunMeanAnomaly) +
                               term.Mp * Checked(MoonMeanAnomaly) + term.F * Checked(MoonArgLatitude);
      const Checked factor = powersOfE.at(static_cast<std::size_t>(term.E));
      group = group + term.coefficient * factor * wave(term.unconverted ? argument : Checked(DegToRad(argument)));
    }
    sum = sum + group;
  }
  return sum;
}

}  // namespace

void MoonPosition(double /*jd*/) {
  const Checked T = Centuries;
  ComputeFundamentalArguments(T);

  MoonLongitude = AddSeries(MoonMeanLongitude, kLongitudeSeries, Sin, T);
  MoonLongitude = NormalizeAngle(MoonLongitude);

  const Checked node = MoonNodeLongitude;
  MoonLatitude = AddSeries(0, kLatitudeSeries, Sin, T) *
                 (1 - 0.0004664 * CosDeg(node) - 0.0000754 * CosDeg(node + NodeCompanion(T)));
  MoonParallax = AddSeries(0.950724, kParallaxSeries, Cos, T);

  Obliquity = MeanObliquity(T);
  Obliquity = NormalizeAngle(Obliquity);

  // As for the Sun, kept on purpose: the ratio and the sine of the declination go through the degree-to-radian
  // conversion, radians are not turned back, and the quadrant is taken from the cosine of the number of degrees. Unlike
  // the Sun's, the conversion takes the whole ratio and the right ascension is normalised.
  const Checked ratio =
      (SinDeg(MoonLongitude) * CosDeg(Obliquity) - TanDeg(MoonLatitude) * SinDeg(Obliquity)) / CosDeg(MoonLongitude);
  const Checked arctangent = Atn(DegToRad(ratio));
  MoonRightAscension = NormalizeAngle(Cos(MoonLongitude) < 0 ? arctangent + 180 : arctangent);
  const Checked sine =
      SinDeg(Obliquity) * CosDeg(MoonLatitude) * SinDeg(MoonLongitude) + CosDeg(Obliquity) * SinDeg(MoonLatitude);
  MoonDeclination = ArcSine(DegToRad(sine));
}

}  // namespace mMoon
