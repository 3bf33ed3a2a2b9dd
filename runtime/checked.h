#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "runtime/floating_point.h"
#include "runtime/runtime_error.h"

// Checked arithmetic: an overflow, a division by zero or an invalid operation raises a RuntimeError at its step. Each
// result is tested. The processor's exception flags would not do: optimisers move steps across the flag tests, and the
// 32-bit library's square root, logarithm and exponential raise no flag.
//
// Int, Sqr (the square root) and Atn are named as in the formulas.

namespace runtime {

/// Raises the error that fits a result that is not finite: 6 Overflow for an infinity, 5 for a NaN.
[[noreturn]] void RaiseArithmeticError(double result);

/// Returns the result of a step unchanged when it is finite. Errors: 6 Overflow, 5 Invalid procedure call or argument.
inline double Tested(double result) {
  if (!std::isfinite(result)) [[unlikely]] {
    RaiseArithmeticError(result);
  }
  return result;
}

/// A double whose arithmetic is tested at every step. A plain number turned into a Checked is not tested, nor is a
/// product of two plain doubles: one operand of each step must be a Checked (usually T or k).
class Checked {
 public:
  constexpr Checked(double value) noexcept : value_(value) {}    // NOLINT(google-explicit-constructor): is a double
  constexpr operator double() const noexcept { return value_; }  // NOLINT(google-explicit-constructor): is a double

 private:
  double value_;
};

/// The operands of an operator: two Checked, or one and a plain number.
template <class A, class B>
concept CheckedOperands = (std::same_as<A, Checked> && (std::same_as<B, Checked> || std::is_arithmetic_v<B>)) ||
                          (std::is_arithmetic_v<A> && std::same_as<B, Checked>);

template <class A, class B>
requires CheckedOperands<A, B> Checked operator+(A a, B b) {
  return Tested(static_cast<double>(a) + static_cast<double>(b));
}

template <class A, class B>
requires CheckedOperands<A, B> Checked operator-(A a, B b) {
  return Tested(static_cast<double>(a) - static_cast<double>(b));
}

template <class A, class B>
requires CheckedOperands<A, B> Checked operator*(A a, B b) {
  return Tested(static_cast<double>(a) * static_cast<double>(b));
}

/// Errors: 11 Division by zero, also for 0 / 0; otherwise as the other operators.
template <class A, class B>
requires CheckedOperands<A, B> Checked operator/(A a, B b) {
  const auto divisor = static_cast<double>(b);
  if (divisor == 0) [[unlikely]] {
    throw RuntimeError(ErrorNumber::DivisionByZero);
  }
  return Tested(static_cast<double>(a) / divisor);
}

inline Checked operator-(Checked x) { return {-static_cast<double>(x)}; }

/// Adds an amount to a variable, tested.
inline void Add(double& variable, Checked amount) { variable = Checked(variable) + amount; }

/// Sine, cosine, tangent of an angle in radians.
inline Checked Sin(Checked radians) { return Tested(std::sin(radians)); }
inline Checked Cos(Checked radians) { return Tested(std::cos(radians)); }
inline Checked Tan(Checked radians) { return Tested(std::tan(radians)); }

/// Arctangent, in radians, -pi/2..pi/2.
inline Checked Atn(Checked x) { return Tested(std::atan(x)); }

/// Square root. Error: 5 Invalid procedure call or argument for a number below zero.
inline Checked Sqr(Checked x) { return Tested(std::sqrt(x)); }

/// x to the power y.
inline Checked Pow(Checked x, double y) { return Tested(std::pow(x, y)); }

/// The greatest whole number not above x: rounds toward minus infinity, never toward zero.
inline Checked Int(Checked x) { return Tested(std::floor(x)); }

/// Converts a whole number to a 16- or 32-bit integer. Error: 6 Overflow outside its range.
template <std::signed_integral Integer, class Number>
requires(sizeof(Integer) <= 4) Integer CheckedCast(Number whole) {
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  return static_cast<Integer>(whole);
}

/// Rounds a double, half to even, to a 16- or 32-bit integer. Error: 6 Overflow outside its range.
template <std::signed_integral Integer>
Integer RoundTo(Checked value) {
  return CheckedCast<Integer>(Tested(std::nearbyint(value)));
}

}  // namespace runtime
