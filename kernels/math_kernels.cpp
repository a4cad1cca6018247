#include "kernels/math_kernels.h"

#include <cmath>

namespace Vk_math_lib {
namespace {

constexpr double kSmoothing = 1.831780823064823;  // tanh of it is 0.95

double fraction(const double* x, int i, double u) { return (u - x[i]) / (x[i + 1] - x[i]); }

}  // namespace

int c_search(const double* x, double u, int n, int* hint) {
  int i = hint != nullptr ? min(max(*hint, 0), n - 2) : 0;
  if (x[1] - x[0] > 0) {
    while (i >= 1 && x[i] > u) --i;
    while (i < n - 2 && u > x[i + 1]) ++i;
  } else {
    while (i >= 1 && u > x[i]) --i;
    while (i < n - 2 && x[i + 1] > u) ++i;
  }
  if (hint != nullptr) *hint = i;
  return i;
}

double c_interp1(const double* x, const double* y, double u, int n, int* hint) {
  const int i = c_search(x, u, n, hint);
  const double f = fraction(x, i, u);
  return y[i + 1] * f + y[i] * (1.0 - f);
}

double c_interp2(const double* x1, const double* x2, const double* z, double u1, double u2, int n1, int n2, int* hint1,
                 int* hint2, bool x1_fastest) {
  const int i1 = c_search(x1, u1, n1, hint1);
  const int i2 = c_search(x2, u2, n2, hint2);
  const double f1 = fraction(x1, i1, u1);
  const double f2 = fraction(x2, i2, u2);
  const auto at = [&](int a, int b) { return x1_fastest ? z[a + n1 * b] : z[b + n2 * a]; };
  const double lo = at(i1 + 1, i2) * f1 + at(i1, i2) * (1.0 - f1);
  const double hi = at(i1 + 1, i2 + 1) * f1 + at(i1, i2 + 1) * (1.0 - f1);
  return f2 * hi + (1.0 - f2) * lo;
}

double sign_smooth(double x, double eps) {
  if (eps > 0) return std::tanh(kSmoothing * x / eps);
  if (x > 0) return 1.0;
  return x < 0 ? -1.0 : 0.0;
}

double signed_sqrt_smooth(double x, double eps) {
  if (eps <= 0) return x >= 0 ? std::sqrt(x) : -std::sqrt(-x);
  const double s = signed_sqrt_smooth(x, 0);
  const double l = x / std::sqrt(eps);
  const double w = (std::tanh((std::fabs(x) - eps) / (eps / 10.0) * kSmoothing) + 1.0) * 0.5;
  return w * s + (1.0 - w) * l;
}

}  // namespace Vk_math_lib
