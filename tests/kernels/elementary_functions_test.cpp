// Elementary functions against the C library's long double, which has 11 bits more; special values; exact cases.

#include "kernels/elementary/elementary_functions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity(), kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
using LongFunction = std::function<long double(long double)>;

class Range {
 public:
  Range(double low, double high) : distribution_(low, high) {}
  double operator()() { return distribution_(generator_); }

 private:
  std::mt19937_64 generator_{20};
  std::uniform_real_distribution<double> distribution_;
};

/// Largest error in a range, in units in the last place of the exact result.
double error(double (*function)(double), const LongFunction& exact, Range range) {
  double worst = 0.0;
  for (int i = 0; i < 20000; ++i) {
    const double x = range();
    const long double y = exact(x);
    const int exponent = std::max(std::ilogb(y), -1022);
    worst = std::max(worst, static_cast<double>(std::fabs(std::scalbn(function(x) - y, 52 - exponent))));
  }
  return worst;
}

TEST(Elementary, ErrorsStayNearHalfAUnit) {
  const auto exp = [](long double x) { return std::exp(x); };
  const auto log = [](long double x) { return std::log(x); };
  const auto atan = [](long double x) { return std::atan(x); };
  for (const Range& range : {Range(-1e-3, 1e-3), Range(-1, 1), Range(-708, 709.7), Range(-745, -708)}) {
    EXPECT_LT(error(elementary::exp, exp, range), 0.505);
  }
  for (const Range& range : {Range(0.99, 1.01), Range(0.5, 2), Range(1, 1e6), Range(1e-320, 1e-307)}) {
    EXPECT_LT(error(elementary::log, log, range), 0.505);
  }
  for (const Range& range : {Range(-1e-3, 1e-3), Range(-1, 1), Range(-100, 100), Range(1e8, 1e20)}) {
    EXPECT_LT(error(elementary::atan, atan, range), 0.505);
  }
  const auto tanh = [](long double x) { return std::tanh(x); };
  EXPECT_LT(error(elementary::tanh, tanh, Range(-1, 1)), 2.5);
  EXPECT_LT(error(elementary::tanh, tanh, Range(1, 25)), 1.0);
  // Powers by what is precise in every library of long double, which its power is not.
  const auto fourth = [](long double x) { return x * x * (x * x); };
  const auto fall = [](long double x) { return 1.0L / (x * std::sqrt(x)); };
  const auto power_of_2 = [](long double y) { return std::exp2(y); };
  EXPECT_LT(error([](double x) { return elementary::pow(x, 4.0); }, fourth, Range(1e-80, 1e77)), 0.505);
  EXPECT_LT(error([](double x) { return elementary::pow(x, 4.0); }, fourth, Range(-1.5, -0.5)), 0.505);
  EXPECT_LT(error([](double x) { return elementary::pow(x, -1.5); }, fall, Range(0.5, 4)), 0.505);
  EXPECT_LT(error([](double x) { return elementary::pow(x, -1.5); }, fall, Range(1e200, 1e212)), 0.505);
  EXPECT_LT(error([](double y) { return elementary::pow(2.0, y); }, power_of_2, Range(-1070, 1023)), 0.505);
}

TEST(Elementary, PowersThatAreNumbersAreExact) {
  for (int n = -1074; n <= 1023; ++n) EXPECT_EQ(elementary::pow(2.0, n), std::ldexp(1.0, n));
  for (int n = 1; n <= 22; ++n) EXPECT_EQ(elementary::pow(10.0, n), 10.0 * elementary::pow(10.0, n - 1));
  for (int n = 0; n < 300; ++n) {
    EXPECT_EQ(elementary::pow(-n, 3.0), -static_cast<double>(n) * n * n);
    EXPECT_EQ(elementary::pow(n * n, 0.5), n);
  }
}

TEST(Elementary, SpecialValues) {
  for (double (*function)(double) : {elementary::exp, elementary::log, elementary::atan, elementary::tanh}) {
    EXPECT_TRUE(std::isnan(function(kNan)));
  }
  for (const double x : {0.0, kSmallest, -kSmallest, 1e-310}) {
    EXPECT_EQ(elementary::exp(x), 1.0);
    EXPECT_EQ(elementary::atan(x), x);
    EXPECT_EQ(elementary::tanh(x), x);
  }
  EXPECT_TRUE(std::signbit(elementary::atan(-0.0)));
  EXPECT_TRUE(std::signbit(elementary::tanh(-0.0)));
  EXPECT_EQ(elementary::exp(kInf), kInf);
  EXPECT_EQ(elementary::exp(710.0), kInf);
  EXPECT_EQ(elementary::exp(-kInf), 0.0);
  EXPECT_EQ(elementary::exp(-745.13), kSmallest);
  EXPECT_EQ(elementary::exp(-745.14), 0.0);
  EXPECT_EQ(elementary::log(1.0), 0.0);
  EXPECT_EQ(elementary::log(-0.0), -kInf);
  EXPECT_EQ(elementary::log(kInf), kInf);
  EXPECT_TRUE(std::isnan(elementary::log(-kSmallest)));
  EXPECT_EQ(elementary::atan(-kInf), -2.0 * elementary::atan(1.0));
  EXPECT_EQ(elementary::tanh(-kInf), -1.0);
}

TEST(Elementary, SpecialPowers) {
  const double values[] = {0.0, -0.0, 0.5, -0.5, 1.0, -1.0, 2.0, -2.0, 3.0, -3.0, 1e300, -1e300, kInf, -kInf, kNan};
  for (const double x : values) {
    for (const double y : values) {
      const double power = elementary::pow(x, y), expected = std::pow(x, y);
      if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(power)) << x << " to " << y;
      } else {
        EXPECT_EQ(power, expected) << x << " to " << y;
        EXPECT_EQ(std::signbit(power), std::signbit(expected)) << x << " to " << y;
      }
    }
  }
}

}  // namespace
