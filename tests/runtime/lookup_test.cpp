#include "runtime/lookup.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kBp[] = {-2, -1, 0, 1, 2};
constexpr double kSquares[] = {4, 1, 0, 1, 4};
constexpr double kSlopeTwo[] = {-4, -2, 0, 2, 4};

double lookup_saturated(double u) {
  double y = 0, twin = 0;
  LookUp_real_T_real_T(&y, kSquares, u, kBp, 4);
  LookUp_real_T_real_T_SAT(&twin, kSquares, u, kBp, 4);
  EXPECT_EQ(y, twin);
  return y;
}

double lookup_even(double u) {
  double y = 0;
  LookUpEven_real_T_real_T(&y, kSquares, u, -2.0, 4, 1.0);
  return y;
}

TEST(Lookup, AllMembersAgreeInsideTheTable) {
  for (int i = -7; i <= 7; ++i) {
    const double u = i / 4.0, fraction = u - std::floor(u);
    const double expected =
        (1 - fraction) * std::floor(u) * std::floor(u) + fraction * (std::floor(u) + 1) * (std::floor(u) + 1);
    EXPECT_EQ(look1_binlcpw(u, kBp, kSquares, 4), expected) << u;
    EXPECT_EQ(look1_binlxpw(u, kBp, kSquares, 4), expected) << u;
    EXPECT_EQ(lookup_saturated(u), expected) << u;
    EXPECT_EQ(lookup_even(u), expected) << u;
    EXPECT_EQ(rt_Lookup(kBp, 5, u, kSquares), expected) << u;
  }
}

TEST(Lookup, EndsClipOrExtrapolate) {
  for (const double u : {-1e9, -2.5, -2.0, 2.0, 2.5, 1e9}) {
    EXPECT_EQ(look1_binlcpw(u, kBp, kSlopeTwo, 4), u < 0 ? -4 : 4);
    EXPECT_EQ(lookup_saturated(u), 4);
    EXPECT_EQ(lookup_even(u), 4);
    EXPECT_EQ(look1_binlxpw(u, kBp, kSlopeTwo, 4), 2 * u);
    EXPECT_EQ(rt_Lookup(kBp, 5, u, kSlopeTwo), 2 * u);
  }
  EXPECT_EQ(lookup_even(1e300), 4);  // a quotient beyond 32 bits
}

TEST(Lookup, NotANumberIn) {
  EXPECT_EQ(look1_binlcpw(kNaN, kBp, kSquares, 4), 4);  // every comparison fails: the last point
  EXPECT_TRUE(std::isnan(look1_binlxpw(kNaN, kBp, kSquares, 4)));
  EXPECT_TRUE(std::isnan(lookup_even(kNaN)));
  EXPECT_TRUE(std::isnan(rt_Lookup(kBp, 5, kNaN, kSquares)));
}

TEST(Lookup, TwoDimensionsReproduceABilinearFunction) {
  const double x[] = {0, 1, 3}, y[] = {-1, 1, 2};
  const auto f = [](double a, double b) { return 1 + 2 * a - b + 0.5 * a * b; };
  double z[9];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) z[i + 3 * j] = f(x[i], y[j]);
  }
  const std::uint32_t last[] = {2, 2};
  for (const double a : {-1.0, 0.0, 0.5, 2.0, 4.0}) {
    for (const double b : {-3.0, 0.0, 1.0, 1.5, 5.0}) {
      EXPECT_NEAR(look2_binlxpw(a, b, x, y, z, last, 3), f(a, b), 1e-13);
      EXPECT_NEAR(rt_Lookup2D_Normal(x, 3, y, 3, z, a, b), f(a, b), 1e-13);
    }
  }
}

}  // namespace
