#include "apps/runner/progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>

namespace runner {

using std::chrono::steady_clock;

Progress::Progress(Milliseconds stop, bool is_quiet)
    : stop_(stop),
      is_quiet_(is_quiet),
      is_terminal_(isatty(STDERR_FILENO) != 0),
      start_(steady_clock::now()),
      next_draw_(start_ + std::chrono::milliseconds(200)) {}

void Progress::update(Milliseconds now) {
  if (is_quiet_ || stop_ == 0) return;
  if (!is_terminal_) {
    const int tenths = static_cast<int>(10 * now / stop_);
    if (tenths > told_tenths_) std::fprintf(stderr, "%s\n", status(now).c_str());
    told_tenths_ = tenths;
    return;
  }
  const auto clock = steady_clock::now();
  if (clock < next_draw_) return;
  next_draw_ = clock + std::chrono::milliseconds(100);
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

}  // namespace runner
