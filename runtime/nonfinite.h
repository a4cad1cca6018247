#pragma once

/// Non-finite constants with fixed bits, tests that hold in any floating point mode, and a power function that is
/// safe for non-finite and negative arguments.

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

extern double rtInf, rtMinusInf, rtNaN;    ///< bits 0x7FF0000000000000, 0xFFF0000000000000, 0xFFF8000000000000
extern float rtInfF, rtMinusInfF, rtNaNF;  ///< bits 0x7F800000, 0xFF800000, 0xFFC00000

/// Writes the constants above anew. They hold the same bits from load on.
void rt_InitInfAndNaN();

double rtGetInf();
double rtGetMinusInf();
double rtGetNaN();
float rtGetInfF();
float rtGetMinusInfF();
float rtGetNaNF();

inline bool rtIsInf(double value) {
  return value == std::numeric_limits<double>::infinity() || value == -std::numeric_limits<double>::infinity();
}
bool rtIsInfF(float value);
/// By the bit pattern.
inline bool rtIsNaN(double value) {
  constexpr std::uint64_t kExponent = UINT64_C(0x7FF0000000000000), kFraction = UINT64_C(0x000FFFFFFFFFFFFF);
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return (bits & kExponent) == kExponent && (bits & kFraction) != 0;
}
bool rtIsNaNF(float value);

/// Prints nothing; tells whether the text is null.
bool rtPrintfNoOp(const char* text);

/// u0 to the power u1.
///
/// A not-a-number operand, or a negative u0 with a u1 that is no whole number, gives rtNaN. Exponents 0, 1, -1, 2 and
/// 0.5 take the exact short forms (so 0 to the power -1 is +Inf); everything else is the C library's power.
/// Here, so that the tests of a constant exponent fold.
inline double rt_powd_snf(double u0, double u1) {
  if (rtIsNaN(u0) || rtIsNaN(u1)) return rtNaN;
  const double base = std::fabs(u0);
  const double exponent = std::fabs(u1);
  if (rtIsInf(u1)) {
    if (base == 1.0) return 1.0;
    if (base > 1.0) return u1 > 0.0 ? rtInf : 0.0;
    return u1 > 0.0 ? 0.0 : rtInf;
  }
  if (exponent == 0.0) return 1.0;
  if (exponent == 1.0) return u1 > 0.0 ? u0 : 1.0 / u0;
  if (u1 == 2.0) return u0 * u0;
  if (u1 == 0.5 && u0 >= 0.0) return std::sqrt(u0);
  if (u0 < 0.0 && u1 > std::floor(u1)) return rtNaN;
  return std::pow(u0, u1);
}
