#include "kernels/elementary/elementary_functions.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace elementary {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// ---- Numbers as unevaluated sums of two doubles

struct Sum {
  double hi, lo;
};

/// a + b without error, for |a| >= |b| or a = 0 (Dekker).
constexpr Sum sum_ordered(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

/// a + b without error (D. E. Knuth, The Art of Computer Programming, volume 2, 4.2.2).
constexpr Sum sum(double a, double b) {
  const double s = a + b, b_in_s = s - a;
  return {s, (a - (s - b_in_s)) + (b - b_in_s)};
}

/// Upper half of the bits of a; |a| < 2^995 (Veltkamp).
constexpr double upper_half(double a) {
  const double c = 0x1p27 * a + a;
  return c - (c - a);
}

/// a b without error, as long as nothing over- or underflows (Dekker).
constexpr Sum product(double a, double b) {
  const double p = a * b, a1 = upper_half(a), b1 = upper_half(b), a2 = a - a1, b2 = b - b1;
  return {p, ((a1 * b1 - p) + a1 * b2 + a2 * b1) + a2 * b2};
}

constexpr Sum operator+(Sum a, Sum b) {
  const Sum s = sum(a.hi, b.hi);
  return sum_ordered(s.hi, s.lo + (a.lo + b.lo));
}

constexpr Sum operator-(Sum a) { return {-a.hi, -a.lo}; }

constexpr Sum operator*(Sum a, Sum b) {
  const Sum p = product(a.hi, b.hi);
  return sum_ordered(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}

constexpr Sum operator/(Sum a, double b) {
  const double q = a.hi / b;
  const Sum p = product(q, b);
  return sum_ordered(q, ((a.hi - p.hi) - p.lo + a.lo) / b);
}

/// z + s z^3 / 3 + z^5 / 5 + s z^7 / 7 ...: the inverse hyperbolic tangent for s = 1, the arc tangent for s = -1.
constexpr Sum inverse_tangent(Sum z, double s) {
  const Sum step = z * z * Sum{s, 0.0};
  Sum result = z, power = z * step;
  for (double n = 3.0; power.hi > 1e-36 || power.hi < -1e-36; n += 2.0, power = power * step) {
    result = result + power / n;
  }
  return result;
}

constexpr Sum exact_log(double a) { return inverse_tangent(Sum{a - 1.0, 0.0} / (a + 1.0), 1.0) * Sum{2.0, 0.0}; }

/// a rounded to a multiple of the unit, and the rest.
constexpr Sum round_to(Sum a, double unit) {
  const double shift = 0x1.8p52 * unit, hi = (a.hi + shift) - shift;
  return {hi, (a.hi - hi) + a.lo};
}

// ---- Tables

/// Of a logarithm, the leading part is a multiple of this, so that it adds to multiples of log(2) without error.
constexpr double kLogUnit = 0x1p-42;
constexpr Sum kLog2 = exact_log(2.0);
constexpr Sum kLog2Parts = round_to(kLog2, kLogUnit);

/// 2^(j/256). The argument of exp is split at multiples of log(2)/256.
constexpr int kExpBits = 8, kExpSteps = 1 << kExpBits;
constexpr Sum kExpStep = round_to(kLog2 / kExpSteps, 0x1p-43);  // times a whole number up to 745 / step without error
constexpr std::array<Sum, kExpSteps> kPowersOf2 = [] {
  std::array<Sum, kExpSteps> table{};
  for (int j = 0; j < kExpSteps; ++j) {
    const Sum x = kLog2 * Sum{j / double{kExpSteps}, 0.0};
    Sum result{1.0, 0.0}, term{1.0, 0.0};
    for (double n = 1.0; term.hi > 1e-36; ++n) {
      term = term * x / n;
      result = result + term;
    }
    table[static_cast<std::size_t>(j)] = result;
  }
  return table;
}();

/// The mantissa m of a logarithm's argument, kFirstMantissa and up to twice that, lies in one of 256 intervals; 1 in
/// the middle of one. Near their centre the inverse, of 11 bits so that its products with half an m are exact.
struct LogEntry {
  double inverse;
  Sum log;  // of 1 / inverse
};
constexpr std::uint64_t kFirstMantissa = std::bit_cast<std::uint64_t>(0.7080078125);
constexpr int kIntervalBits = 52 - 8;
constexpr std::array<LogEntry, 256> kLogs = [] {
  std::array<LogEntry, 256> table{};
  for (std::uint64_t j = 0; j != table.size(); ++j) {
    const std::uint64_t first = kFirstMantissa + (j << kIntervalBits), last = first + (1ULL << kIntervalBits);
    const bool has_one = std::bit_cast<double>(first) < 1.0 && std::bit_cast<double>(last) > 1.0;
    const double centre = has_one ? 1.0 : 0.5 * (std::bit_cast<double>(first) + std::bit_cast<double>(last));
    const double inverse = round_to({1.0 / centre, 0.0}, 0x1p-10).hi;
    table[j] = {inverse, round_to(-exact_log(inverse), kLogUnit)};
  }
  return table;
}();

/// atan(j/64) and, from 65 on, pi/2 - atan((129 - j)/64): each the arc tangent of something that j rises with.
constexpr int kAtanSteps = 64;
constexpr std::array<Sum, 2 * kAtanSteps + 2> kAtans = [] {
  std::array<Sum, 2 * kAtanSteps + 2> table{};
  for (std::size_t j = 1; j <= kAtanSteps; ++j) {
    const auto n = static_cast<double>(j);
    const Sum difference = Sum{double{kAtanSteps}, 0.0} / (double{kAtanSteps} * kAtanSteps + n * (n - 1.0));
    table[j] = table[j - 1] + inverse_tangent(difference, -1.0);
  }
  const Sum half_pi = table[kAtanSteps] * Sum{2.0, 0.0};
  for (std::size_t j = 0; j <= kAtanSteps; ++j) table[table.size() - 1 - j] = half_pi + -table[j];
  return table;
}();

// ---- Exponential

/// 2^n for a normal result.
double power_of_2(int n) { return std::bit_cast<double>(static_cast<std::uint64_t>(n + 1023) << 52); }

/// x = n log(2) + log(factor) + r + rest, |r| < 0.0014.
struct ExpArgument {
  int n;
  Sum factor;
  double r, rest;
};

ExpArgument split_exp(Sum x) {
  constexpr double kShift = 0x1.8p52;
  const double k = (x.hi * (kExpSteps / kLog2.hi) + kShift) - kShift;
  const double near = x.hi - k * kExpStep.hi, far = k * kExpStep.lo - x.lo, r = near - far;
  const int steps = static_cast<int>(k);
  return {steps >> kExpBits, kPowersOf2[static_cast<std::size_t>(steps & (kExpSteps - 1))], r, (near - r) - far};
}

/// exp(r) - 1 - r
double exp_beyond_line(double r) {
  const double r2 = r * r;
  return r2 * ((0.5 + r * (1.0 / 6.0)) + r2 * ((1.0 / 24.0 + r * (1.0 / 120.0)) + r2 * (1.0 / 720.0)));
}

/// exp(x) of a finite x, in which |x.lo| is small.
double exp_of(Sum x) {
  if (x.hi > 709.79) return kInfinity;
  if (x.hi < -745.14) return 0.0;
  const ExpArgument a = split_exp(x);
  const double hi = a.factor.hi, lo = a.factor.lo + hi * (a.r + (a.rest + exp_beyond_line(a.r)));
  if (a.n > 1022) return (hi + lo) * 2.0 * power_of_2(a.n - 1);
  if (a.n > -1022 || (a.n == -1022 && hi + lo >= 1.0)) return (hi + lo) * power_of_2(a.n);
  // A result below the normal numbers is rounded once, to a multiple of the smallest of them.
  const double shift = power_of_2(-1022 - a.n);
  const Sum shifted = sum(shift, hi);
  return ((shifted.hi + (shifted.lo + lo)) - shift) * power_of_2(a.n + 1000) * 0x1p-1000;
}

/// exp(x) - 1 for |x| < 45
double exp_minus_1(double x) {
  const ExpArgument a = split_exp({x, 0.0});
  const double scale = power_of_2(a.n), factor = a.factor.hi * scale;
  const Sum step = sum(factor, -1.0), line = product(factor, a.r), result = sum(step.hi, line.hi);
  const double beyond = a.factor.lo * scale + factor * (a.rest + exp_beyond_line(a.r));
  return result.hi + (result.lo + (step.lo + (line.lo + beyond)));
}

// ---- Logarithm

/// x = 2^k (1 + r) / inverse: log(x) = base + rest + log(1 + r), |r| < 0.0025.
struct LogArgument {
  double base, rest;
  Sum r;
};

LogArgument split_log(double x) {
  double k = 0.0;
  if (x < std::numeric_limits<double>::min()) {
    x *= 0x1p54;
    k = -54.0;
  }
  const auto bits = std::bit_cast<std::uint64_t>(x);
  const std::uint64_t above = bits - kFirstMantissa;
  const auto exponent = static_cast<std::int64_t>(above) >> 52;
  const LogEntry& entry = kLogs[above >> kIntervalBits & 0xff];
  const std::uint64_t mantissa_bits = bits - (static_cast<std::uint64_t>(exponent) << 52);
  const auto mantissa = std::bit_cast<double>(mantissa_bits);
  const auto upper = std::bit_cast<double>(mantissa_bits & 0xffffffff00000000);
  k += static_cast<double>(exponent);
  return {k * kLog2Parts.hi + entry.log.hi, k * kLog2Parts.lo + entry.log.lo,
          sum(upper * entry.inverse - 1.0, (mantissa - upper) * entry.inverse)};
}

/// (log(1 + r) - r + r^2 / 2) / r^3
double log_beyond_square(double r) {
  const double r2 = r * r;
  return (1.0 / 3.0 - r * 0.25) + r2 * ((0.2 - r * (1.0 / 6.0)) + r2 * (1.0 / 7.0 - r * 0.125));
}

/// log(x) of a positive finite x, to some 70 bits.
Sum precise_log(double x) {
  const LogArgument a = split_log(x);
  const double r = a.r.hi;
  const Sum square = product(r, r), line = sum(a.base, r), parabola = sum(line.hi, -0.5 * square.hi);
  const double beyond = r * square.hi * log_beyond_square(r) - r * a.r.lo - 0.5 * square.lo;
  return sum_ordered(parabola.hi, parabola.lo + (line.lo + (a.rest + (a.r.lo + beyond))));
}

enum class Parity { not_whole, even, odd };

Parity parity(double y) {
  y = std::fabs(y);
  if (y >= 0x1p53) return Parity::even;
  const auto whole = static_cast<std::int64_t>(y);
  if (static_cast<double>(whole) != y) return Parity::not_whole;
  return (whole & 1) != 0 ? Parity::odd : Parity::even;
}

/// pow where one of the operands is zero, infinite or not a number, and y is not 0, x not 1.
double pow_of_special(double x, double y) {
  if (std::isnan(x) || std::isnan(y)) return x + y;
  const double size = std::fabs(x);
  if (std::isinf(y)) {
    if (size == 1.0) return 1.0;
    return (size > 1.0) == (y > 0.0) ? kInfinity : 0.0;
  }
  const double result = (size > 1.0) == (y > 0.0) ? kInfinity : 0.0;
  return std::signbit(x) && parity(y) == Parity::odd ? -result : result;
}

}  // namespace

double exp(double x) {
  if (std::isnan(x)) return x + x;
  return exp_of({x, 0.0});
}

double log(double x) {
  if (!(x > 0.0)) return x == 0.0 ? -kInfinity : std::numeric_limits<double>::quiet_NaN();
  if (x == kInfinity) return x;
  const LogArgument a = split_log(x);
  const double r = a.r.hi;
  const Sum line = sum(a.base, r);
  return line.hi + (line.lo + (a.rest + (a.r.lo + r * r * (r * log_beyond_square(r) - 0.5))));
}

double pow(double x, double y) {
  if (x == 1.0 || y == 0.0) return 1.0;
  if (x == 0.0 || !std::isfinite(x) || !std::isfinite(y)) return pow_of_special(x, y);
  double sign = 1.0;
  if (x < 0.0) {
    const Parity kind = parity(y);
    if (kind == Parity::not_whole) return std::numeric_limits<double>::quiet_NaN();
    if (kind == Parity::odd) sign = -1.0;
    x = -x;
  }
  constexpr double kLargest = 0x1p64;  // from here on, only x = 1 has a power that is a number
  if (std::fabs(y) > kLargest) y = y > 0.0 ? kLargest : -kLargest;
  const Sum log_x = precise_log(x);
  const Sum exponent = product(y, log_x.hi);
  return sign * exp_of({exponent.hi, exponent.lo + y * log_x.lo});
}

double tanh(double x) {
  if (std::isnan(x)) return x + x;
  const double size = std::fabs(x);
  if (size < 0x1p-55) return x;
  double result = 1.0;
  if (size < 1.0) {
    const double t = exp_minus_1(-2.0 * size);
    result = -t / (t + 2.0);
  } else if (size < 22.0) {
    result = 1.0 - 2.0 / (exp_minus_1(2.0 * size) + 2.0);
  }
  return std::copysign(result, x);
}

double atan(double x) {
  if (std::isnan(x)) return x + x;
  const double size = std::fabs(x);
  if (size > 0x1p66) return std::copysign(kAtans.back().hi, x);
  // atan(size) = atan(c) + atan((size - c) / (1 + c size)), and the same of -1 / size
  const bool is_steep = size > 1.0;
  const int step = (static_cast<int>((is_steep ? 1.0 / size : size) * (2.0 * kAtanSteps)) + 1) / 2;  // the nearest
  const double c = step / double{kAtanSteps};
  const Sum c_size = product(c, size);
  Sum above = is_steep ? sum(c_size.hi, -1.0) : Sum{size - c, 0.0};
  Sum below = is_steep ? sum(size, c) : sum(1.0, c_size.hi);
  (is_steep ? above : below).lo += c_size.lo;
  const Sum& base = kAtans[static_cast<std::size_t>(is_steep ? 2 * kAtanSteps + 1 - step : step)];

  const double inverse = 1.0 / below.hi, t = above.hi * inverse;
  const Sum back = product(t, below.hi);
  const double t_rest = ((above.hi - back.hi) - back.lo + (above.lo - t * below.lo)) * inverse;
  const double t2 = t * t;
  const double beyond = t * t2 * ((-1.0 / 3.0 + t2 * 0.2) + t2 * t2 * (-1.0 / 7.0 + t2 * (1.0 / 9.0)));
  const Sum line = sum_ordered(base.hi, t);
  return std::copysign(line.hi + (line.lo + (base.lo + (t_rest + beyond))), x);
}

}  // namespace elementary
