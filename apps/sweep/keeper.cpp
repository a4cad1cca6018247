#include "apps/sweep/keeper.h"

#include <cmath>
#include <limits>

namespace sweep {

void Keeper::add(runner::Milliseconds time, std::span<const double> row) {
  const double step = runner::seconds(time - last_time_);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const double value = row[columns_[i].source];
    State& state = states_[i];
    if (is_empty_) {
      state = {value, value, value, value, 0.0};
      continue;
    }
    if (value < state.min || std::isnan(value)) state.min = value;  // once not-a-number, nothing is less
    if (value > state.max || std::isnan(value)) state.max = value;
    state.integral += 0.5 * (state.last + value) * step;
    state.last = value;
  }
  if (is_empty_) first_time_ = time;
  last_time_ = time;
  is_empty_ = false;
}

std::vector<double> Keeper::values() const {
  std::vector<double> values;
  const double duration = runner::seconds(last_time_ - first_time_);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const State& state = states_[i];
    const double mean = duration > 0.0 ? state.integral / duration : state.last;
    double value = state.last;
    switch (columns_[i].take) {
      case Take::kLast:
        break;
      case Take::kMin:
        value = state.min;
        break;
      case Take::kMax:
        value = state.max;
        break;
      case Take::kMean:
        value = mean;
        break;
      case Take::kIntegral:
        value = state.integral;
        break;
      case Take::kRise:
        value = state.last - state.first;
        break;
    }
    values.push_back(is_empty_ ? std::numeric_limits<double>::quiet_NaN() : value);
  }
  return values;
}

}  // namespace sweep
