#include "astro/degrees.h"
#include "astro/mMoon.h"
#include "astro/obliquity.h"

namespace mMoon {

double Centuries = 0;
double SunMeanLongitude = 0;
double SunMeanAnomaly = 0;
double EarthEccentricity = 0;
double SunEquationOfCentre = 0;
double SunTrueAnomaly = 0;
double SunTrueLongitude = 0;
double SunApparentLongitude = 0;
double Obliquity = 0;
double SunRightAscension = 0;
double SunDeclination = 0;

void SunPosition(double /*jd*/) {
  const Checked T = Centuries;
  const Checked T2 = Pow(T, 2);

  SunMeanLongitude = 279.69668 + 36000.76892 * T + 0.0003025 * T2;
  SunMeanLongitude = NormalizeAngle(SunMeanLongitude);
  SunMeanAnomaly = 358.47583 + 35999.04975 * T - 0.00015 * T2 - 0.0000033 * Pow(T, 3);
  SunMeanAnomaly = NormalizeAngle(SunMeanAnomaly);
  EarthEccentricity = 0.01675104 - 0.0000418 * T - 0.000000126 * T2;

  const Checked M = SunMeanAnomaly;
  SunEquationOfCentre = (1.91946 - 0.004789 * T - 0.000014 * T2) * SinDeg(M) + (0.020094 - 0.0001 * T) * SinDeg(2 * M) +
                        0.000293 * SinDeg(3 * M);
  SunTrueAnomaly = Checked(SunEquationOfCentre) + SunMeanAnomaly;
  SunTrueLongitude = Checked(SunMeanLongitude) + SunEquationOfCentre;
  const Checked nodeLongitude = 259.18 - 1934.142 * T;
  SunApparentLongitude = Checked(SunTrueLongitude) - 0.00569 - 0.00479 * SinDeg(nodeLongitude);
  Obliquity = MeanObliquity(T);

  // Three departures of the right ascension and the declination, kept on purpose: a sine goes through the
  // degree-to-radian conversion once more, the radians of the arctangent are not turned back into degrees, and the
  // quadrant is taken from the cosine of the number of degrees as if it were radians.
  const Checked numerator = DegToRad(SinDeg(SunTrueLongitude) * CosDeg(Obliquity));
  const Checked arctangent = Atn(numerator / CosDeg(SunTrueLongitude));
  SunRightAscension = Cos(SunTrueLongitude) < 0 ? arctangent + 180 : arctangent;
  SunDeclination = ArcSine(SinDeg(SunTrueLongitude) * DegToRad(SinDeg(Obliquity)));
}

}  // namespace mMoon
