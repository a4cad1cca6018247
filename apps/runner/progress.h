#pragma once

#include <chrono>
#include <string>

#include "apps/runner/times.h"

namespace runner {

enum class ProgressMode {
  kAuto,  ///< a bar that renews itself on a terminal, a line every ten percent elsewhere
  kJson,  ///< a JSON object a line, at most ten a second, and one when the run is finished
  kNone
};

/// Tells on standard error how far a run is.
class Progress {
 public:
  Progress(Milliseconds stop, ProgressMode mode);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void update(Milliseconds now);

  /// Wipes the bar, so that another line can be written; the next update draws it again.
  void clear();

  /// Wall time since the construction, in seconds.
  double elapsed() const;

 private:
  std::string status(Milliseconds now) const;
  std::string json(Milliseconds now) const;

  Milliseconds stop_;
  ProgressMode mode_;
  bool is_terminal_;
  bool is_drawn_ = false;
  int told_tenths_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point next_draw_;
};

}  // namespace runner
