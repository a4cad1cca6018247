#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"
#include "apps/runner/times.h"
#include "apps/runner/units.h"

namespace runner {
namespace {

TEST(Numbers, ReadBackAsTheSameBits) {
  std::mt19937_64 bits(7);
  std::vector<double> values = {0.0, -0.0, 0.1, 1e22, 5e-324, std::numeric_limits<double>::max(), 1.0 / 3.0};
  while (values.size() < 10000) {
    const double value = std::bit_cast<double>(bits());
    if (std::isfinite(value)) values.push_back(value);
  }
  for (const double value : values) {
    const std::optional<double> back = parse_number(number_text(value));
    ASSERT_TRUE(back) << number_text(value);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(*back), std::bit_cast<std::uint64_t>(value));
  }
  EXPECT_EQ(number_text(0.3), "0.3");
  EXPECT_EQ(number_text(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

std::string time_error(const std::string& text, Milliseconds least) {
  try {
    parse_time(text, "--time", least);
    return "accepted";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ExitCode::kUsage);
    return error.what();
  }
}

TEST(Times, AreWholeMilliseconds) {
  EXPECT_EQ(parse_time("1998", "", 0), 1'998'000);
  EXPECT_EQ(parse_time("1e-3", "", 1), 1);
  EXPECT_EQ(parse_time(" 0.3", "", 0), 300);
  EXPECT_EQ(parse_time("12345.678", "", 0), 12'345'678);
  EXPECT_EQ(seconds_text(12'345'678), "12345.678");
  EXPECT_EQ(seconds_text(1'000'000'000), "1000000");

  EXPECT_NE(time_error("0.0012", 0).find("nearest valid time is 0.001 s"), std::string::npos);
  EXPECT_NE(time_error("0.0002", 1).find("nearest valid time is 0.001 s"), std::string::npos);
  EXPECT_NE(time_error("0", 1).find("nearest valid time is 0.001 s"), std::string::npos);
  EXPECT_NE(time_error("1.00000001", 0).find("nearest valid time is 1 s"), std::string::npos);
  for (const char* text : {"", "abc", "1s", "nan", "-1", "inf", "1e10"}) {
    EXPECT_EQ(time_error(text, 0).substr(0, 7), "--time:") << text;
  }
}

// The unit adds 0.001 for each millisecond and refuses a communication point farther than 1e-9 from its sum.
TEST(Times, LongestStepKeepsTheUnitsClockAtTheCommunicationPoint) {
  for (const Milliseconds now : {0L, 999'000L, 8'191'000L, 16'383'999L, 131'072'000L, 4'194'303'999L, 7'999'999'000L}) {
    const Milliseconds step = longest_step(now);
    ASSERT_GE(step, 1);
    ASSERT_LE(step, 1000);
    double clock = seconds(now);
    for (Milliseconds i = 0; i < step; ++i) clock += 0.001;
    EXPECT_LE(std::fabs(clock - seconds(now + step)), 1e-9) << now;
  }
  EXPECT_EQ(longest_step(1'998'000), 1000);
}

TEST(Units, ConvertThroughTheBaseUnits) {
  const std::array<int, 8> pressure = {1, -1, -2}, temperature = {0, 0, 0, 0, 1};
  const std::vector<Unit> units = {{"bar", BaseUnit{pressure, 1e5, 0}, {{"mbar", 1000, 0}}},
                                   {"Pa", BaseUnit{pressure, 1, 0}, {{"kPa", 1e-3, 0}}},
                                   {"K", BaseUnit{temperature, 1, 0}, {}},
                                   {"degC", BaseUnit{temperature, 1, 273.15}, {{"degF", 1.8, 32}}}};
  EXPECT_DOUBLE_EQ(convert(units, 98, "kPa", "bar").value(), 0.98);
  EXPECT_DOUBLE_EQ(convert(units, 1013.25, "mbar", "Pa").value(), 101325);
  EXPECT_DOUBLE_EQ(convert(units, 25, "degC", "K").value(), 298.15);
  EXPECT_DOUBLE_EQ(convert(units, 212, "degF", "degC").value(), 100);
  EXPECT_DOUBLE_EQ(convert(units, -40, "degF", "K").value(), 233.15);
  EXPECT_EQ(convert(units, 1, "K", "bar"), std::nullopt);
  EXPECT_EQ(convert(units, 1, "psi", "bar"), std::nullopt);
  EXPECT_EQ(compatible_units(units, "bar"), (std::vector<std::string>{"bar", "Pa", "mbar", "kPa"}));
}

TEST(Names, NearOnesAreFound) {
  EXPECT_EQ(edit_distance("kitten", "sitting"), 3U);
  EXPECT_EQ(edit_distance("", "abc"), 3U);
  EXPECT_EQ(edit_distance("Stack", "stack"), 0U);
  EXPECT_EQ(did_you_mean("stak", {"stack", "stick", "slack", "stock", "compressor"}),
            "; did you mean 'stack', 'stick' or 'slack'?");
  EXPECT_EQ(did_you_mean("stak", {"compressor"}), "");
}

TEST(Names, MatchPatterns) {
  EXPECT_TRUE(matches_pattern("stack.voltage", "stack.*"));
  EXPECT_TRUE(matches_pattern("cell[1].u", "cell[1].u"));  // the name itself, although [1] is a pattern
  EXPECT_TRUE(matches_pattern("cell2", "cell[1-3]"));
  EXPECT_FALSE(matches_pattern("stack.voltage", "stack"));
}

}  // namespace
}  // namespace runner
