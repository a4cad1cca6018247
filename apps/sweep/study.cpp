#include "apps/sweep/study.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <set>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"
#include "apps/runner/units.h"
#include "apps/sweep/sampling.h"
#include "apps/sweep/scalars.h"

namespace sweep {
namespace {

using runner::Error;
using runner::ExitCode;
using runner::Variable;
using runner::VariableType;

constexpr std::uint64_t kMostPoints = 10'000'000;

Error usage(const std::string& message) { return {ExitCode::kUsage, message}; }

template <class Predicate>
std::vector<std::string_view> names_of(const runner::ModelDescription& description, Predicate is_wanted) {
  std::vector<std::string_view> names;
  for (const Variable& variable : description.variables) {
    if (is_wanted(variable)) names.push_back(variable.name);
  }
  return names;
}

void warn_if_outside(const Variable& variable, const std::vector<double>& values, const std::string& where) {
  const auto outside = std::count_if(values.begin(), values.end(), [&](double value) {
    return (variable.min && value < *variable.min) || (variable.max && value > *variable.max);
  });
  if (outside == 0) return;
  const auto limit = [](std::optional<double> bound) { return bound ? runner::number_text(*bound) : "any"; };
  std::cerr << "tessera-sweep: warning: " << where << outside << " of " << values.size()
            << " values outside the described range from " << limit(variable.min) << " to " << limit(variable.max)
            << " " << variable.unit << "\n";
}

}  // namespace

Study::Study(const Plan& plan, const runner::ModelDescription& description) : description_(description) {
  const auto multiply = [&](std::size_t factor) {
    count_ *= factor;
    if (count_ > kMostPoints)
      throw usage(plan.file + ": the plan has more than " + std::to_string(kMostPoints) + " points");
  };
  for (const GridInput& input : plan.grid) {
    const Variable& variable = add_input(input.name, input.where);
    std::vector<double>& values = grid_.emplace_back();
    for (const std::string& text : input.values) values.push_back(value(text, variable, input.where));
    warn_if_outside(variable, values, input.where);
    multiply(values.size());
  }

  if (!plan.sample.empty()) {
    points_ = latin_hypercube(plan.sample_count, plan.sample.size(), plan.sample_seed);
    multiply(points_.size());
  }
  for (std::size_t axis = 0; axis < plan.sample.size(); ++axis) {
    const SampledInput& input = plan.sample[axis];
    const Variable& variable = add_input(input.name, input.where);
    if (variable.type != VariableType::kReal) throw usage(input.where + "a Boolean has no range; list it in [grid]");
    const double from = value(input.from, variable, input.where);
    const double to = value(input.to, variable, input.where);
    warn_if_outside(variable, {from, to}, input.where);
    for (std::vector<double>& point : points_) point[axis] = from + (to - from) * point[axis];
  }

  if (!plan.rows.empty()) multiply(plan.rows.size());
  for (std::size_t column = 0; column < plan.row_inputs.size(); ++column) {
    const Variable& variable = add_input(plan.row_inputs[column], plan.rows_where);
    points_.resize(plan.rows.size());
    std::vector<double> values;
    for (const Row& row : plan.rows) values.push_back(value(row.values[column], variable, row.where));
    for (std::size_t i = 0; i < values.size(); ++i) points_[i].push_back(values[i]);
    warn_if_outside(variable, values, plan.rows_where + variable.name + ": ");
  }
}

const Variable& Study::add_input(const std::string& name, const std::string& where) {
  const Variable* variable = description_.find(name);
  if (variable == nullptr) {
    throw usage(where + "the unit has no variable '" + name + "'" +
                runner::did_you_mean(name, names_of(description_, [](const Variable& v) { return v.is_settable(); })));
  }
  if (!variable->is_settable()) {
    throw usage(where + name + " cannot be set, its causality is " + variable->causality +
                "; parameters and inputs can");
  }
  if (variable->type != VariableType::kReal && variable->type != VariableType::kBoolean) {
    throw usage(where + name + " is of type " + runner::type_name(variable->type) +
                "; this program sets Real and Boolean variables");
  }
  if (std::find(inputs_.begin(), inputs_.end(), variable) != inputs_.end()) {
    throw usage(where + name + " is named twice");
  }
  inputs_.push_back(variable);
  return *variable;
}

double Study::value(const std::string& text, const Variable& variable, const std::string& where) const {
  const std::string subject = where + variable.name + " = " + text + ": ";
  if (variable.type == VariableType::kBoolean) {
    if (text == "1" || text == "true") return 1.0;
    if (text == "0" || text == "false") return 0.0;
    throw usage(subject + "the value of a Boolean is 0, 1, true or false");
  }
  std::string_view unit;
  std::optional<double> value = runner::leading_number(text, unit);
  if (!value || !std::isfinite(*value)) throw usage(subject + "the value is no finite number");
  if (unit.empty()) return *value;
  value = runner::convert(description_.units, *value, unit, variable.unit);
  if (value) return *value;
  std::string known;
  for (const std::string& name : runner::compatible_units(description_.units, variable.unit)) {
    if (!name.empty()) known += (known.empty() ? "" : ", ") + name;
  }
  throw usage(subject + "'" + std::string(unit) + "' is no unit of this variable; " +
              (known.empty() ? "it has none" : "it takes " + known));
}

std::vector<double> Study::point(std::uint64_t index) const {
  std::vector<double> values(grid_.size());
  const std::vector<double>* rest = nullptr;
  if (!points_.empty()) {
    rest = &points_[index % points_.size()];
    index /= points_.size();
  }
  for (std::size_t i = grid_.size(); i-- > 0;) {
    values[i] = grid_[i][index % grid_[i].size()];
    index /= grid_[i].size();
  }
  if (rest != nullptr) values.insert(values.end(), rest->begin(), rest->end());
  return values;
}

std::vector<Column> result_columns(const Plan& plan, const Study& study, const runner::ModelDescription& description) {
  std::vector<Column> columns;
  std::set<std::string> names = {"point", "status", "reason"};
  const auto add = [&](const Column& column, const std::string& where) {
    if (!names.insert(column.name).second) throw usage(where + "there is a column '" + column.name + "' already");
    columns.push_back(column);
  };
  for (const Variable* input : study.inputs()) add({input->name, input->unit, true}, plan.file + ": ");
  for (const Kept& kept : plan.keep) {
    const Variable* output = description.find(kept.signal);
    if (output == nullptr || !output->is_output()) {
      throw usage(
          kept.where + "the unit has no output '" + kept.signal + "'" +
          runner::did_you_mean(kept.signal, names_of(description, [](const Variable& v) { return v.is_output(); })));
    }
    const bool is_quotient = output->unit.find('/') != std::string::npos;
    const std::string factor =
        is_quotient ? "(" + output->unit + ")." : output->unit + (output->unit.empty() ? "" : ".");
    add({kept.column, kept.take == Take::kIntegral ? factor + "s" : output->unit, false}, kept.where);
  }
  for (const std::string& name : plan.scalars) {
    const Scalar* scalar = find_scalar(name);
    if (scalar == nullptr) {
      std::vector<std::string_view> known;
      for (const Scalar& candidate : scalars()) known.emplace_back(candidate.name);
      throw usage(plan.scalars_where + "there is no scalar '" + name + "'" + runner::did_you_mean(name, known));
    }
    if (!offers(description, *scalar)) {
      const Scalar::Source& source = scalar->sources.front();
      throw usage(plan.scalars_where + name + " is made of outputs such as " + source.signal + " in " + source.unit +
                  ", which this unit does not have");
    }
    add({scalar->name, scalar->unit, false}, plan.scalars_where);
  }
  return columns;
}

}  // namespace sweep
