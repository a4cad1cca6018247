#include "apps/runner/times.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {

std::string seconds_text(Milliseconds time) {
  char digits[kNumberWidth];
  return {digits, std::to_chars(digits, digits + kNumberWidth, seconds(time), std::chars_format::fixed).ptr};
}

Milliseconds parse_time(std::string_view text, const std::string& subject, Milliseconds least) {
  const std::optional<double> value = parse_number(text);
  if (!value || std::isnan(*value)) {
    throw Error(ExitCode::kUsage, subject + ": '" + std::string(text) + "' is no number of seconds");
  }
  const double exact = *value * 1000.0;
  if (exact > static_cast<double>(kLongestTime) || exact < -0.5) {
    throw Error(ExitCode::kUsage, subject + ": " + std::string(text) + " s is outside the range from " +
                                      seconds_text(least) + " to " + seconds_text(kLongestTime) + " s");
  }
  const Milliseconds nearest = std::max<Milliseconds>(std::llround(exact), least);
  if (std::fabs(exact - static_cast<double>(nearest)) > std::clamp(1e-9 * exact, 1e-9, 1e-3)) {
    throw Error(ExitCode::kUsage, subject + ": " + std::string(text) + " s is " +
                                      (least > 0 ? "no positive whole number" : "no whole number") +
                                      " of milliseconds; the nearest valid time is " + seconds_text(nearest) + " s");
  }
  return nearest;
}

Milliseconds longest_step(Milliseconds now) {
  const double end = seconds(now) + 1.0;
  const double spacing = std::nextafter(end, std::numeric_limits<double>::infinity()) - end;
  // n additions round by at most half a spacing each: half of the 1e-9 s is used, the rest is margin.
  return std::clamp<Milliseconds>(static_cast<Milliseconds>(1e-9 / spacing), 1, 1000);
}

}  // namespace runner
