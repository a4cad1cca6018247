#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "apps/runner/model_description.h"
#include "apps/runner/times.h"

namespace runner {

/// What an engineer asks first of a run of the vehicle's power system, from its rows: distance, hydrogen, stack energy
/// and efficiency, batteries, extreme temperatures and pressures. Figures whose outputs are not among the columns, or
/// have another unit, are left out.
class Summary {
 public:
  explicit Summary(const std::vector<const Variable*>& outputs);

  /// Takes in a row; `values` has one value an output.
  void add(Milliseconds time, std::span<const double> values);

  struct Figure {
    std::string title, text;
  };

  /// The figures. Empty before the second row.
  std::vector<Figure> figures() const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// Least and largest value of several columns, with where and when they were.
  struct Extremes {
    struct Value {
      double value = 0.0;
      std::size_t column = kNone;
      Milliseconds time = 0;
    };
    std::vector<std::size_t> columns;
    Value least, largest;

    void add(Milliseconds time, std::span<const double> values);
  };

  std::size_t column(std::string_view name, std::string_view unit) const;
  double first(std::size_t column) const { return first_[column]; }
  double last(std::size_t column) const { return last_[column]; }
  std::string extremes_text(const Extremes& extremes, const char* unit) const;

  const std::vector<const Variable*>& outputs_;
  std::size_t distance_, hydrogen_, power_, hv_battery_, lv_battery_, tank_;
  Extremes temperatures_, pressures_;
  std::vector<double> first_, last_;
  Milliseconds last_time_ = 0;
  std::size_t rows_ = 0;
  double stack_energy_ = 0.0;  // J
};

}  // namespace runner
