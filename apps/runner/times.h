#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace runner {

/// A simulated time. The unit steps in whole milliseconds, so the program keeps its times as such and never adds up
/// fractions of a second.
using Milliseconds = std::int64_t;

/// Longest run, about 92 days. Up to here neighbouring doubles are less than 1e-9 s apart, which is as closely as the
/// unit compares the communication point with its own time.
inline constexpr Milliseconds kLongestTime = 8'000'000'000;

constexpr double seconds(Milliseconds time) { return static_cast<double>(time) / 1000.0; }

/// The time in seconds with the shortest digits and without an exponent.
std::string seconds_text(Milliseconds time);

/// Reads a time in seconds, which must be a whole number of milliseconds from `least` to kLongestTime.
/// @param subject  what the time is, for the message
/// @throws Error kUsage; it names the nearest time that would do
Milliseconds parse_time(std::string_view text, const std::string& subject, Milliseconds least);

/// Longest communication step from `now` on. It is one second, and less beyond two hours: the unit adds up its time in
/// milliseconds, each addition rounds to a double, and the sum must stay within 1e-9 s of the next communication point.
Milliseconds longest_step(Milliseconds now);

}  // namespace runner
