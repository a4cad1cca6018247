#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "apps/runner/text.h"

namespace runner {
namespace {

TEST(Numbers, ReadBackAsTheSameBits) {
  std::mt19937_64 bits(7);
  for (int i = 0; i < 10000; ++i) {
    const double value = std::bit_cast<double>(bits());
    if (!std::isfinite(value)) continue;
    const std::optional<double> back = parse_number(number_text(value));
    ASSERT_TRUE(back) << number_text(value);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(*back), std::bit_cast<std::uint64_t>(value));
  }
  EXPECT_EQ(number_text(-0.0), "-0");
  EXPECT_EQ(number_text(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(Names, NearOnesAreFoundAndPatternsMatch) {
  EXPECT_EQ(did_you_mean("stak", {"stork", "Stack", "stick", "slack", "compressor"}),
            "; did you mean 'Stack', 'stork' or 'stick'?");
  EXPECT_EQ(did_you_mean("stak", {"compressor"}), "");
  EXPECT_TRUE(matches_pattern("cell[1].u", "cell[1].u"));  // the name itself, although [1] is a pattern
  EXPECT_TRUE(matches_pattern("cell2", "cell[1-3]"));
  EXPECT_FALSE(matches_pattern("stack.voltage", "stack"));
}

}  // namespace
}  // namespace runner
