#pragma once

/// Scalar rules that many blocks share, with what each does with a not-a-number.

#include <cmath>

/// The larger of two signals; if one of them is not a number, the other.
inline double larger(double a, double b) { return a >= b || std::isnan(b) ? a : b; }

/// The smaller of two signals; if one of them is not a number, the other.
inline double smaller(double a, double b) { return a <= b || std::isnan(b) ? a : b; }

/// x held within its limits; a not-a-number stays one.
constexpr double saturated(double x, double lower, double upper) { return x < lower ? lower : x > upper ? upper : x; }

/// x if it is above the floor, else (also for a not-a-number) the floor.
constexpr double floored(double x, double floor) { return x > floor ? x : floor; }

/// What keeps safe reciprocals finite.
inline constexpr double kEpsilon = 2.220446049250313e-16;

/// 1 / x that goes to 0 instead of beyond all bounds where x does.
constexpr double safe_reciprocal(double x) { return x / (kEpsilon + x * x); }
