#include "apps/runner/statistics.h"

#include <cmath>

namespace runner {

void Statistics::add(Milliseconds time, std::span<const double> values) {
  for (std::size_t i = 0; i < signals_.size(); ++i) {
    Signal& signal = signals_[i];
    const double value = values[i];
    signal.least = std::fmin(signal.least, value);  // of a number and a NaN they answer the number
    signal.largest = std::fmax(signal.largest, value);
    if (has_rows_) signal.integral += 0.5 * (signal.last + value) * seconds(time - last_time_);
    signal.last = value;
  }
  if (!has_rows_) first_time_ = time;
  last_time_ = time;
  has_rows_ = true;
}

double Statistics::mean(std::size_t index) const {
  const double duration = seconds(last_time_ - first_time_);
  return duration > 0.0 ? signals_[index].integral / duration : signals_[index].last;
}

}  // namespace runner
