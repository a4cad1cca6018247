#include "runtime/nonfinite.h"

#include <bit>
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

bool rtIsInfF(float value) { return value == rtInfF || value == rtMinusInfF; }

bool rtIsNaNF(float value) {
  constexpr std::uint32_t kExponent = 0x7F800000U, kFraction = 0x007FFFFFU;
  const auto bits = std::bit_cast<std::uint32_t>(value);
  return (bits & kExponent) == kExponent && (bits & kFraction) != 0;
}

bool rtPrintfNoOp(const char* text) { return text == nullptr; }
