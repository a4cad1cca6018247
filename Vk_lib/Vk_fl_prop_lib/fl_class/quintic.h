#pragma once

#include <cmath>

namespace Vk_fl_prop_lib {

// Polynomials of the fifth degree in T [K], six coefficients from the constant upwards. Powers are products from the
// left and the terms are summed as they stand, so that every compiler gives the same bits.

/// sum of a[i] T^i
constexpr double quintic(const double* a, double T) {
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T;
  return a[0] + a[1] * T + a[2] * T2 + a[3] * T3 + a[4] * T4 + a[5] * T5;
}

/// d/dT of the quintic
constexpr double quintic_slope(const double* a, double T) {
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T;
  return a[1] + 2 * a[2] * T + 3 * a[3] * T2 + 4 * a[4] * T3 + 5 * a[5] * T4;
}

/// start + the integral of the quintic from T_r to T
constexpr double quintic_integral(double start, const double* a, double T, double T_r) {
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T, T6 = T5 * T;
  const double r2 = T_r * T_r, r3 = r2 * T_r, r4 = r3 * T_r, r5 = r4 * T_r, r6 = r5 * T_r;
  return start + a[0] * (T - T_r) + a[1] * (T2 - r2) / 2 + a[2] * (T3 - r3) / 3 + a[3] * (T4 - r4) / 4 +
         a[4] * (T5 - r5) / 5 + a[5] * (T6 - r6) / 6;
}

/// start + the integral of the quintic over T from T_r to T
inline double quintic_over_T_integral(double start, const double* a, double T, double T_r) {
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T;
  const double r2 = T_r * T_r, r3 = r2 * T_r, r4 = r3 * T_r, r5 = r4 * T_r;
  return start + a[0] * std::log(T / T_r) + a[1] * (T - T_r) + a[2] * (T2 - r2) / 2 + a[3] * (T3 - r3) / 3 +
         a[4] * (T4 - r4) / 4 + a[5] * (T5 - r5) / 5;
}

}  // namespace Vk_fl_prop_lib
