#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/runner/run_options.h"

namespace sweep {

/// What is kept of an output over the rows of a run. Mean and integral follow the trapezoidal rule, the integral over
/// seconds; the rise is the last value minus the first.
enum class Take { kLast, kMin, kMax, kMean, kIntegral, kRise };
inline constexpr const char* kTakeNames = "last, min, max, mean, integral and rise";

/// @throws runner::Error kUsage, its text starts with `where`
Take parse_take(const std::string& text, const std::string& where);
const char* take_name(Take take);

/// A column of the results.
struct Kept {
  std::string column, signal;
  Take take;
  std::string where;  ///< in the plan, to start a message with
};

/// The values of an input, still as texts: numbers with or without a unit.
struct GridInput {
  std::string name, where;
  std::vector<std::string> values;
};

/// The range of an input.
struct SampledInput {
  std::string name, where, from, to;
};

/// A point of a CSV plan.
struct Row {
  std::string where;
  std::vector<std::string> values;
};

/// A parameter study as its file describes it; whether the unit has what it names is not known yet.
///
/// Its points are each combination of the grid's values, the last input changing fastest, and for each of them all
/// points of the sample; or else the rows.
struct Plan {
  std::string file;
  runner::RunOptions run;  ///< what is the same for all points
  std::string run_where;   ///< empty: the plan does not tell
  std::vector<GridInput> grid;
  std::vector<SampledInput> sample;
  std::uint32_t sample_count = 1;
  std::uint64_t sample_seed = 0;
  std::string rows_where;
  std::vector<std::string> row_inputs;
  std::vector<Row> rows;
  std::vector<Kept> keep;
  std::vector<std::string> scalars;  ///< names of figures of a whole run
  std::string scalars_where;
};

/// Reads a plan: TOML, or CSV if the name ends so.
///
/// TOML: [run] as in a configuration file of a run; [grid] NAME = [values], or {from, to, step} or {from, to, count},
/// both with a unit if need be; [sample] count, seed and NAME = {from, to}; [keep] COLUMN = {signal, take}, or
/// SIGNAL = take or [takes], and scalars = [names]. A dot in a name needs no quotes.
/// CSV: names of inputs in the first line, one point in each further line.
/// @throws runner::Error kFile if it cannot be read, kUsage naming file, line and what would do
Plan read_plan(const std::filesystem::path& file);

/// Adds "SIGNAL=TAKE" or the name of a scalar to what is kept.
/// @throws runner::Error kUsage
void add_keep(const std::string& text, Plan& plan);

}  // namespace sweep
