#include "apps/runner/progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace runner {

using std::chrono::steady_clock;

Progress::Progress(Milliseconds stop, ProgressMode mode)
    : stop_(stop),
      mode_(mode),
      is_terminal_(isatty(STDERR_FILENO) != 0),
      start_(steady_clock::now()),
      next_draw_(start_ + std::chrono::milliseconds(200)) {}

void Progress::update(Milliseconds now) {
  if (mode_ == ProgressMode::kNone || stop_ == 0) return;
  if (mode_ == ProgressMode::kAuto && !is_terminal_) {
    const int tenths = static_cast<int>(10 * now / stop_);
    if (tenths > told_tenths_) std::fprintf(stderr, "%s\n", status(now).c_str());
    told_tenths_ = tenths;
    return;
  }
  const auto clock = steady_clock::now();
  const bool is_last_line = mode_ == ProgressMode::kJson && now == stop_;
  if (clock < next_draw_ && !is_last_line) return;
  next_draw_ = clock + std::chrono::milliseconds(100);
  if (mode_ == ProgressMode::kJson) {
    std::fprintf(stderr, "%s\n", json(now).c_str());
    return;
  }
  constexpr int kWidth = 30;
  const auto filled = static_cast<std::size_t>(kWidth * now / stop_);
  const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
  std::fprintf(stderr, "\r\x1b[K[%s] %s", bar.c_str(), status(now).c_str());
  std::fflush(stderr);
  is_drawn_ = true;
}

void Progress::clear() {
  if (is_drawn_) std::fprintf(stderr, "\r\x1b[K");
  is_drawn_ = false;
}

double Progress::elapsed() const { return std::chrono::duration<double>(steady_clock::now() - start_).count(); }

std::string Progress::status(Milliseconds now) const {
  const double wall = elapsed();
  const double speed = seconds(now) / wall;
  const long left = std::lround(seconds(stop_ - now) / speed);
  char text[128];
  std::snprintf(text, sizeof text, "%3d %%, %s of %s s, %.3g times real time, %ld:%02ld left",
                static_cast<int>(100 * now / stop_), seconds_text(now).c_str(), seconds_text(stop_).c_str(), speed,
                left / 60, left % 60);
  return text;
}

std::string Progress::json(Milliseconds now) const {
  const double wall = elapsed();
  const double speed = seconds(now) / wall;
  const nlohmann::ordered_json line = {{"time", seconds(now)},
                                       {"stopTime", seconds(stop_)},
                                       {"fraction", static_cast<double>(now) / static_cast<double>(stop_)},
                                       {"wallTime", wall},
                                       {"realTimeFactor", speed},
                                       {"secondsLeft", seconds(stop_ - now) / speed}};
  return line.dump();
}

}  // namespace runner
