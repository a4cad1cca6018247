#pragma once

#include <cmath>

#include "kernels/math_kernels.h"

namespace Vk_fl_prop_lib {

/// How an inversion ended.
struct NewtonResult {
  double x;        ///< the last iterate
  double error;    ///< |1 - f / y| of the iterate before x
  int iterations;  ///< steps taken
};

/// Newton iteration for f(x) = y with a central difference of relative width eps, each iterate limited to
/// [x_min, x_max].
///
/// The error belongs to the x from before the step, so that the answer has had one more step than its error tells. The
/// first evaluation is at x0 even if that lies outside the limits. A not-a-number iterate becomes x_max. y = 0 makes
/// the error infinite or not a number; the latter ends the iteration at once.
/// @param f       function of one double
/// @param y       wanted value
/// @param x0      start, not 0
/// @param eps     relative tolerance on f and relative step of the difference
/// @param max_it  limit of steps; each costs three evaluations of f
template <class F>
NewtonResult newton(F f, double y, double x0, double eps, int max_it, double x_min, double x_max) {
  NewtonResult result = {.x = x0, .error = 1e300, .iterations = 0};
  while (result.error > eps && result.iterations < max_it) {
    const double x = result.x;
    const double f_plus = f((1 + eps) * x);
    const double f_minus = f((1 - eps) * x);
    const double slope = -(f_plus - f_minus) / (2 * x * eps);
    const double residual = y - f(x);
    result.error = std::fabs(residual / y);
    const double offset = residual - slope * x;
    const double next = -offset / slope;
    result.x = Vk_math_lib::max(Vk_math_lib::min(next, x_max), x_min);
    ++result.iterations;
  }
  return result;
}

}  // namespace Vk_fl_prop_lib
