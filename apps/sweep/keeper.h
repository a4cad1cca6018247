#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "apps/runner/times.h"
#include "apps/sweep/plan.h"

namespace sweep {

/// Condenses the rows of a run to the values that are kept.
class Keeper {
 public:
  struct Column {
    std::size_t source;  ///< position in a row
    Take take;
  };
  explicit Keeper(std::vector<Column> columns) : columns_(std::move(columns)), states_(columns_.size()) {}

  void add(runner::Milliseconds time, std::span<const double> row);

  /// One value a column; not-a-number without a row. Where a row held one, min, max, mean and integral
  /// are not-a-number too.
  std::vector<double> values() const;

 private:
  struct State {
    double first = 0.0, last = 0.0, min = 0.0, max = 0.0;
    double integral = 0.0;  ///< over the time in seconds
  };
  std::vector<Column> columns_;
  std::vector<State> states_;
  runner::Milliseconds first_time_ = 0, last_time_ = 0;
  bool is_empty_ = true;
};

}  // namespace sweep
