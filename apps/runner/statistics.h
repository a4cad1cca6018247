#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "apps/runner/times.h"

namespace runner {

/// Least, largest, mean and last value of each signal, and its integral over time, from the rows of a run. Between two
/// rows a signal counts as a straight line. A value that is not a number is neither the least nor the largest.
class Statistics {
 public:
  struct Signal {
    double least = std::numeric_limits<double>::quiet_NaN();
    double largest = std::numeric_limits<double>::quiet_NaN();
    double integral = 0.0;  ///< unit of the signal times s
    double last = std::numeric_limits<double>::quiet_NaN();
  };

  /// @param signals  how many
  explicit Statistics(std::size_t signals) : signals_(signals) {}

  /// Takes in a row; `values` has one value a signal.
  void add(Milliseconds time, std::span<const double> values);

  const Signal& signal(std::size_t index) const { return signals_[index]; }

  /// Mean over time; of a single row its value.
  double mean(std::size_t index) const;

 private:
  std::vector<Signal> signals_;
  Milliseconds first_time_ = 0, last_time_ = 0;
  bool has_rows_ = false;
};

}  // namespace runner
