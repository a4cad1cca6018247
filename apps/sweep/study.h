#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "apps/runner/model_description.h"
#include "apps/sweep/plan.h"

namespace sweep {

/// More points than this are refused unless the user insists.
inline constexpr std::uint64_t kManyPoints = 10'000;

/// The points of a plan for a unit.
class Study {
 public:
  /// @throws runner::Error kUsage, naming the place in the plan, if an input does not exist, cannot be set or is named
  ///         twice, if a value is none for its input, or if there are more than ten million points
  Study(const Plan& plan, const runner::ModelDescription& description);

  const std::vector<const runner::Variable*>& inputs() const { return inputs_; }
  std::uint64_t count() const { return count_; }

  /// The values of the inputs, each in the unit of its variable; of a Boolean 0 or 1. Points are counted from 0.
  std::vector<double> point(std::uint64_t index) const;

 private:
  const runner::Variable& add_input(const std::string& name, const std::string& where);
  double value(const std::string& text, const runner::Variable& variable, const std::string& where) const;

  const runner::ModelDescription& description_;
  std::vector<const runner::Variable*> inputs_;
  std::vector<std::vector<double>> grid_;    ///< values of each input of the grid
  std::vector<std::vector<double>> points_;  ///< of the sample or the rows: values of the inputs behind those
  std::uint64_t count_ = 1;
};

/// A column of the results.
struct Column {
  std::string name, unit;
  bool is_input;
};

/// The columns of the results behind point, status and reason: the inputs, then what is kept.
/// @throws runner::Error kUsage, naming the place in the plan, if the unit does not have what is kept, or if two
/// columns
///         have the same name
std::vector<Column> result_columns(const Plan& plan, const Study& study, const runner::ModelDescription& description);

}  // namespace sweep
