#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace sweep {

/// The values from `from` to `to` in steps of `step`, which is negative where they fall. The last one is `to` if a
/// whole number of steps leads there. Values are rounded to 15 digits: the third of {0, 0.1, ...} is 0.2, not 0.2 and
/// a rounding error.
/// @return nullopt if no step leads from `from` towards `to`, or more than ten million
std::optional<std::vector<double>> stepped(double from, double to, double step);

/// `count` values from `from` to `to`, equally far apart, both ends included; rounded as above.
/// @param count  at least 2
std::vector<double> spaced(double from, double to, std::uint32_t count);

/// Latin hypercube of `count` points in the unit cube: along each axis the points fall into `count` equal strata, one
/// point in each, at a random place in it. The same arguments give the same bits on every machine.
/// McKay, Beckman, Conover, Technometrics 21 (1979) 239-245.
/// @param count  1 to 2^21
/// @return the points, each with one coordinate in [0, 1) for each axis
std::vector<std::vector<double>> latin_hypercube(std::uint32_t count, std::size_t axes, std::uint64_t seed);

}  // namespace sweep
