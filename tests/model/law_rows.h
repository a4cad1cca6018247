#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

template <std::size_t n>
using Rows = std::initializer_list<std::array<double, n>>;

/// Expects of a law of n numbers the value at the end of each row, to rounding. Goes through the rows in order.
template <std::size_t n, class Law>
void expect_law(const Law& law, const Rows<n + 1>& rows) {
  for (const auto& row : rows) {
    const auto at = [&]<std::size_t... i>(std::index_sequence<i...>)->double { return law(row[i]...); };
    EXPECT_NEAR(at(std::make_index_sequence<n>()), row[n], 1e-12 * std::fabs(row[n]) + 1e-15)
        << testing::PrintToString(row);
  }
}
