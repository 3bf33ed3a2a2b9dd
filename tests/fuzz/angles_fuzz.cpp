// The angle helpers with any double.
// Input: the double.

#include "astro/mMoon.h"
#include "fuzz/fuzzing.h"

using namespace fuzzing;
using runtime::ErrorNumber;

namespace {

// (q - m) * 360 carries the rounding of q = n / 360, at most 2^-31 for whole degrees of 32 bits.
constexpr double kNormalisedWithin = 2e-7;

void NormalizeAngle(double angle) {
  double normalised = 0;
  const auto error = ErrorOf([&] { normalised = mMoon::NormalizeAngle(angle); });
  if (std::isnan(angle)) {
    Require(!error && std::isnan(normalised), "what is neither below 0 nor above 360 comes back untouched");
    return;
  }
  const double whole = std::floor(angle);
  if (!(Within(-2147483648.0, whole, 2147483647.0))) {
    Require(error == ErrorNumber::Overflow, "whole degrees beyond 32 bits overflow");
    return;
  }
  Require(!error, "an angle of 32 bits has no error");
  Require(Within(-kNormalisedWithin, normalised, 360 + kNormalisedWithin), "an angle is brought into 0..360");
  Require(std::fabs(std::remainder(normalised - angle, 360)) <= 2 * kNormalisedWithin, "whole turns are taken away");
  Require(!Within(0, angle, 360) || normalised == angle, "0..360 comes back untouched");
}

void DegToRad(double angle) {
  double radians = 0;
  const auto error = ErrorOf([&] { radians = mMoon::DegToRad(angle); });
  Require(error.has_value() == !std::isfinite(angle), "only what is not finite fails");
  RequireArithmetic(error);
  if (!error) {
    // Below the normal doubles the division by 360 loses digits.
    const double degrees = radians / 3.1415926535 * 180;
    Require(std::fabs(degrees - angle) <= std::fabs(angle) * 1e-14 + 1e-300, "the conversion is turned back");
  }
}

void ArcSine(double x) {
  double arc = 0;
  const auto error = ErrorOf([&] { arc = mMoon::ArcSine(x); });
  if (std::fabs(x) < 1) {
    Require(!error, "inside -1..1 there is no error");
    Require(std::fabs(arc) < 1.5707963267949 && std::signbit(arc) == std::signbit(x), "an arctangent of x's sign");
    Require(mMoon::ArcSine(-x) == -arc, "the function is odd");
  } else if (std::fabs(x) == 1) {
    Require(error == ErrorNumber::DivisionByZero, "1 and -1 divide by zero");
  } else {
    Require(error == ErrorNumber::InvalidProcedureCall || error == ErrorNumber::Overflow, "beyond there is no root");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto x = input.Take<double>();
  NormalizeAngle(x);
  DegToRad(x);
  ArcSine(x);
  return 0;
}
