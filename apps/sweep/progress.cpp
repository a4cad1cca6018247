#include "apps/sweep/progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>

namespace sweep {

using std::chrono::steady_clock;

Progress::Progress(std::uint64_t points, bool is_quiet)
    : points_(points),
      is_quiet_(is_quiet),
      is_terminal_(isatty(STDERR_FILENO) != 0),
      start_(steady_clock::now()),
      next_(start_) {}

void Progress::count(bool is_ok) {
  ++played_;
  if (!is_ok) ++failed_;
}

void Progress::update() {
  if (is_quiet_) return;
  const auto now = steady_clock::now();
  if (now < next_) return;
  next_ = now + (is_terminal_ ? std::chrono::milliseconds(200) : std::chrono::milliseconds(10'000));
  std::fprintf(stderr, is_terminal_ ? "\r\x1b[K%s" : "%s\n", status().c_str());
  std::fflush(stderr);
  is_drawn_ = is_terminal_;
}

void Progress::clear() {
  if (is_drawn_) std::fprintf(stderr, "\r\x1b[K");
  is_drawn_ = false;
}

double Progress::elapsed() const { return std::chrono::duration<double>(steady_clock::now() - start_).count(); }

std::string Progress::status() const {
  std::string status = std::to_string(played_) + " of " + std::to_string(points_) + " points";
  if (failed_ > 0) status += ", " + std::to_string(failed_) + " failed";
  if (played_ == 0) return status;
  const long left = std::lround(elapsed() * static_cast<double>(points_ - played_) / static_cast<double>(played_));
  char text[64];
  std::snprintf(text, sizeof text, ", %ld:%02ld:%02ld left", left / 3600, left / 60 % 60, left % 60);
  return status + text;
}

}  // namespace sweep
