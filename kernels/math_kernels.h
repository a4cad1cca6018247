#pragma once

/// Small stateless numerics shared by the fluid, pressure drop and heat exchange code.
namespace Vk_math_lib {

inline constexpr double pi_div_4 = 0.7853981633974483;

/// The smaller of two values. With a not-a-number operand the answer is b, unlike std::min.
template <class T>
const T& min(const T& a, const T& b) {
  return b > a ? a : b;
}

/// The larger of two values. With a not-a-number operand the answer is b, unlike std::max.
template <class T>
const T& max(const T& a, const T& b) {
  return a > b ? a : b;
}

/// Index i of the interval x[i] .. x[i + 1] that holds u, 0 to n - 2, by a linear walk from a hint.
///
/// Suited to a table that is read with a slowly moving input. Outside the table the answer is the end interval.
/// @param x     n breakpoints, strictly rising or strictly falling
/// @param hint  in: where the walk starts, clamped to the table; out: the answer. Null: the walk starts at 0
int c_search(const double* x, double u, int n, int* hint);

/// Linear interpolation of y over x at u; extrapolates along the end intervals.
/// @param x, y  n values each; x as in c_search
double c_interp1(const double* x, const double* y, double u, int n, int* hint);

/// Bilinear interpolation of z over x1 and x2 at (u1, u2); extrapolates.
/// @param x1_fastest  true: element (a, b) lies at z[a + n1 * b]; false: at z[b + n2 * a]
double c_interp2(const double* x1, const double* x2, const double* z, double u1, double u2, int n1, int n2, int* hint1,
                 int* hint2, bool x1_fastest);

/// Sign of x, smoothed by a tanh that reaches 0.95 at x = eps; the exact sign (0 for not-a-number) for eps <= 0.
double sign_smooth(double x, double eps);

/// Root of |x| with the sign of x; for eps > 0 it gives way to the line x / sqrt(eps) around |x| < eps, so that the
/// slope at 0 stays finite.
double signed_sqrt_smooth(double x, double eps);

}  // namespace Vk_math_lib
