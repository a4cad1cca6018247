#include "kernels/math_kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Vk_math_lib {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(MathKernels, MinAndMaxAnswerTheSecondOperandForNaN) {
  EXPECT_EQ(min(1.0, 2.0), 1.0);
  EXPECT_EQ(max(1.0, 2.0), 2.0);
  EXPECT_EQ(min(kNaN, 2.0), 2.0);
  EXPECT_EQ(max(kNaN, 2.0), 2.0);
  EXPECT_TRUE(std::isnan(min(1.0, kNaN)));
  EXPECT_TRUE(std::isnan(max(1.0, kNaN)));
}

TEST(MathKernels, SearchFindsTheSameIntervalFromAnyHint) {
  const double rising[] = {0, 1, 2, 4, 8};
  const double falling[] = {8, 4, 2, 1, 0};
  for (const double u : {-1.0, 0.5, 1.5, 3.0, 7.0, 9.0}) {
    const int in_rising = c_search(rising, u, 5, nullptr);
    const int in_falling = c_search(falling, u, 5, nullptr);
    EXPECT_EQ(in_falling, 3 - in_rising) << u;  // the tables mirror each other and no u hits a breakpoint
    for (const int hint : {-3, 0, 2, 3, 4, 100}) {
      int h = hint;
      EXPECT_EQ(c_search(rising, u, 5, &h), in_rising) << u << " from " << hint;
      EXPECT_EQ(h, in_rising);
    }
  }
  EXPECT_EQ(c_search(falling, 2.0, 5, nullptr), 1);  // x[1] >= u >= x[2]
}

TEST(MathKernels, InterpolationReproducesLinearFunctionsAndExtrapolatesThem) {
  const double x1[] = {0, 1, 3}, x2[] = {10, 0};
  const auto f = [](double a, double b) { return 2 * a - 3 * b + 5; };
  const double y[] = {f(0, 0), f(1, 0), f(3, 0)};
  double first_fastest[6], second_fastest[6];
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 2; ++b) first_fastest[a + 3 * b] = second_fastest[b + 2 * a] = f(x1[a], x2[b]);
  }
  for (const double a : {-2.0, 0.25, 1.0, 2.0, 5.0}) {
    EXPECT_NEAR(c_interp1(x1, y, a, 3, nullptr), f(a, 0), 1e-14);
    for (const double b : {-1.0, 4.0, 12.0}) {
      int h1 = 0, h2 = 0;
      EXPECT_NEAR(c_interp2(x1, x2, first_fastest, a, b, 3, 2, &h1, &h2, true), f(a, b), 1e-13);
      EXPECT_NEAR(c_interp2(x1, x2, second_fastest, a, b, 3, 2, nullptr, nullptr, false), f(a, b), 1e-13);
    }
  }
}

TEST(MathKernels, SmoothedSignReaches95PercentAtItsWidth) {
  EXPECT_NEAR(sign_smooth(0.3, 0.3), 0.95, 1e-15);
  EXPECT_NEAR(sign_smooth(-0.3, 0.3), -0.95, 1e-15);
  EXPECT_EQ(sign_smooth(1e-300, 0), 1.0);
  EXPECT_EQ(sign_smooth(-1e-300, -1), -1.0);
  EXPECT_EQ(sign_smooth(0.0, 0), 0.0);
  EXPECT_EQ(sign_smooth(kNaN, 0), 0.0);
}

TEST(MathKernels, SmoothedRootIsALineInsideAndTheRootOutside) {
  EXPECT_EQ(signed_sqrt_smooth(4, 0), 2.0);
  EXPECT_EQ(signed_sqrt_smooth(-4, 0), -2.0);
  EXPECT_EQ(signed_sqrt_smooth(0, 1), 0.0);
  for (const double eps : {0.01, 4.0}) {
    EXPECT_NEAR(signed_sqrt_smooth(0.1 * eps, eps), 0.1 * std::sqrt(eps), 1e-12);
    EXPECT_NEAR(signed_sqrt_smooth(eps, eps), std::sqrt(eps), 1e-15);  // both meet here
    EXPECT_NEAR(signed_sqrt_smooth(3 * eps, eps), std::sqrt(3 * eps), 1e-12);
    EXPECT_EQ(signed_sqrt_smooth(-0.7 * eps, eps), -signed_sqrt_smooth(0.7 * eps, eps));
  }
}

}  // namespace
}  // namespace Vk_math_lib
