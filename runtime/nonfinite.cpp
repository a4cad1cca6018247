#include "runtime/nonfinite.h"

#include <bit>
#include <cmath>
#include <cstdint>

constinit double rtInf = std::bit_cast<double>(UINT64_C(0x7FF0000000000000));
constinit double rtMinusInf = std::bit_cast<double>(UINT64_C(0xFFF0000000000000));
constinit double rtNaN = std::bit_cast<double>(UINT64_C(0xFFF8000000000000));
constinit float rtInfF = std::bit_cast<float>(UINT32_C(0x7F800000));
constinit float rtMinusInfF = std::bit_cast<float>(UINT32_C(0xFF800000));
constinit float rtNaNF = std::bit_cast<float>(UINT32_C(0xFFC00000));

double rtGetInf() { return std::bit_cast<double>(UINT64_C(0x7FF0000000000000)); }
double rtGetMinusInf() { return std::bit_cast<double>(UINT64_C(0xFFF0000000000000)); }
double rtGetNaN() { return std::bit_cast<double>(UINT64_C(0xFFF8000000000000)); }
float rtGetInfF() { return std::bit_cast<float>(UINT32_C(0x7F800000)); }
float rtGetMinusInfF() { return std::bit_cast<float>(UINT32_C(0xFF800000)); }
float rtGetNaNF() { return std::bit_cast<float>(UINT32_C(0xFFC00000)); }

void rt_InitInfAndNaN() {
  rtInf = rtGetInf();
  rtMinusInf = rtGetMinusInf();
  rtNaN = rtGetNaN();
  rtInfF = rtGetInfF();
  rtMinusInfF = rtGetMinusInfF();
  rtNaNF = rtGetNaNF();
}

bool rtIsInf(double value) { return value == rtInf || value == rtMinusInf; }
bool rtIsInfF(float value) { return value == rtInfF || value == rtMinusInfF; }

bool rtIsNaN(double value) {
  constexpr std::uint64_t kExponent = UINT64_C(0x7FF0000000000000), kFraction = UINT64_C(0x000FFFFFFFFFFFFF);
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return (bits & kExponent) == kExponent && (bits & kFraction) != 0;
}

bool rtIsNaNF(float value) {
  constexpr std::uint32_t kExponent = 0x7F800000U, kFraction = 0x007FFFFFU;
  const auto bits = std::bit_cast<std::uint32_t>(value);
  return (bits & kExponent) == kExponent && (bits & kFraction) != 0;
}

bool rtPrintfNoOp(const char* text) { return text == nullptr; }

double rt_powd_snf(double u0, double u1) {
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
