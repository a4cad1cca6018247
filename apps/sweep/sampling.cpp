#include "apps/sweep/sampling.h"

#include <charconv>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>

namespace sweep {
namespace {

double rounded_to_15_digits(double value) {
  char digits[64];
  const char* const end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::scientific, 14).ptr;
  std::from_chars(digits, end, value);
  return value;
}

/// An integer from 0 to limit - 1, each equally likely: draws beyond the largest multiple of `limit` are dropped.
std::uint64_t draw_below(std::mt19937_64& generator, std::uint64_t limit) {
  const std::uint64_t excess = (std::mt19937_64::max() % limit + 1) % limit;
  std::uint64_t drawn = generator();
  while (drawn > std::mt19937_64::max() - excess) drawn = generator();
  return drawn % limit;
}

}  // namespace

std::optional<std::vector<double>> stepped(double from, double to, double step) {
  constexpr double kMost = 1e7;
  const double steps = (to - from) / step;
  if (!(steps >= 0.0 && steps < kMost)) return std::nullopt;
  const double whole = std::round(steps);
  if (std::fabs(steps - whole) < 1e-9 * (1.0 + whole)) {
    return whole > 0.0 ? spaced(from, to, static_cast<std::uint32_t>(whole) + 1) : std::vector{from};
  }
  std::vector<double> values(static_cast<std::size_t>(steps) + 1);
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = rounded_to_15_digits(from + static_cast<double>(i) * step);
  }
  return values;
}

std::vector<double> spaced(double from, double to, std::uint32_t count) {
  std::vector<double> values(count);
  for (std::uint32_t i = 0; i < count; ++i) values[i] = rounded_to_15_digits(from + (to - from) * i / (count - 1));
  values.back() = to;
  return values;
}

std::vector<std::vector<double>> latin_hypercube(std::uint32_t count, std::size_t axes, std::uint64_t seed) {
  // The generator's output is fixed by the C++ standard, that of the library's distributions and shuffle is not.
  std::mt19937_64 generator(seed);
  std::vector<std::vector<double>> points(count, std::vector<double>(axes));
  std::vector<std::uint32_t> strata(count);
  for (std::size_t axis = 0; axis < axes; ++axis) {
    std::iota(strata.begin(), strata.end(), 0U);
    for (std::uint32_t i = count; i > 1; --i) std::swap(strata[i - 1], strata[draw_below(generator, i)]);
    for (std::uint32_t i = 0; i < count; ++i) {
      const double place = static_cast<double>(generator() >> 32U) * 0x1p-32;  // the sum below is exact
      points[i][axis] = (strata[i] + place) / count;
    }
  }
  return points;
}

}  // namespace sweep
