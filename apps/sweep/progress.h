#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace sweep {

/// Tells on standard error how far a sweep is: a line that renews itself on a terminal, a line every ten seconds
/// elsewhere.
class Progress {
 public:
  /// @param points  to be played now
  Progress(std::uint64_t points, bool is_quiet);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void count(bool is_ok);

  /// To be called often.
  void update();
  void clear();

  std::uint64_t played() const { return played_; }

  /// Wall time since the construction, in seconds.
  double elapsed() const;

 private:
  std::string status() const;

  std::uint64_t points_, played_ = 0, failed_ = 0;
  bool is_quiet_, is_terminal_, is_drawn_ = false;
  std::chrono::steady_clock::time_point start_, next_;
};

}  // namespace sweep
