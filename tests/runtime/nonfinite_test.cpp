#include "runtime/nonfinite.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace {

std::uint64_t bits(double x) { return std::bit_cast<std::uint64_t>(x); }

TEST(NonFinite, ConstantsHoldTheirBitsAndComeBack) {
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_EQ(bits(rtInf), UINT64_C(0x7FF0000000000000));
    EXPECT_EQ(bits(rtMinusInf), UINT64_C(0xFFF0000000000000));
    EXPECT_EQ(bits(rtNaN), UINT64_C(0xFFF8000000000000));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(rtNaNF), 0xFFC00000U);
    rtInf = rtNaN = 0.0;
    rt_InitInfAndNaN();
  }
  EXPECT_TRUE(rtIsNaN(rtNaN) && rtIsNaNF(rtNaNF) && rtIsInf(rtMinusInf) && rtIsInfF(rtInfF));
  EXPECT_FALSE(rtIsNaN(rtInf) || rtIsNaN(1.0) || rtIsInf(1e308) || rtIsInf(rtNaN) || rtIsNaNF(rtMinusInfF));
}

TEST(NonFinite, PowerTakesItsRulesInOrder) {
  const double inf = rtInf;
  EXPECT_EQ(bits(rt_powd_snf(rtNaN, 0.0)), bits(rtNaN));  // before the rule of exponent 0
  EXPECT_EQ(bits(rt_powd_snf(1.0, rtNaN)), bits(rtNaN));
  EXPECT_EQ(rt_powd_snf(-1.0, inf), 1.0);
  EXPECT_EQ(rt_powd_snf(2.0, -inf), 0.0);
  EXPECT_EQ(rt_powd_snf(0.5, -inf), inf);
  EXPECT_EQ(rt_powd_snf(inf, 0.0), 1.0);
  EXPECT_EQ(rt_powd_snf(-7.0, 1.0), -7.0);
  EXPECT_EQ(rt_powd_snf(0.0, -1.0), inf);
  EXPECT_EQ(rt_powd_snf(2.0, 0.5), std::sqrt(2.0));
  EXPECT_TRUE(rtIsNaN(rt_powd_snf(-8.0, 1.0 / 3.0)));
  EXPECT_EQ(rt_powd_snf(-2.0, 3.0), -8.0);
}

}  // namespace
