#include "apps/runner/run.h"

#include <signal.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <utility>

#include "apps/runner/assignments.h"
#include "apps/runner/csv_writer.h"
#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/progress.h"
#include "apps/runner/result_file.h"
#include "apps/runner/signals.h"
#include "apps/runner/summary.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"
#include "apps/runner/unit_instance.h"
#include "apps/runner/unit_library.h"

namespace runner {
namespace {

/// A run as the options and the description settle it.
struct Plan {
  Milliseconds stop;
  Milliseconds interval;
  std::vector<const Variable*> outputs;
  std::vector<Write> start;
  std::vector<TimedWrites> changes;  ///< in the order of time
};

/// A time that the option gives or, failing that, the description.
Milliseconds choose_time(const std::optional<std::string>& given, const std::string& described, const char* option,
                         const char* attribute, Milliseconds least) {
  if (given) return parse_time(*given, option, least);
  if (described.empty()) {
    throw Error(ExitCode::kUsage, std::string("the model description proposes no ") + attribute + "; give " + option);
  }
  return parse_time(described, std::string(attribute) + " of the model description, without " + option, least);
}

Plan make_plan(const RunOptions& options, const ModelDescription& description) {
  Plan plan;
  plan.stop = choose_time(options.stop_time, description.stop_time, "--stop-time", "stopTime", 0);
  plan.interval = choose_time(options.output_interval, description.step_size, "--output-interval", "stepSize", 1);
  plan.outputs = select_outputs(description, options.output_variables);

  const Assignments assignments(description, !options.keep_gates);
  for (const std::string& text : options.start_values) {
    for (const Write& write : assignments.start_value(text)) plan.start.push_back(write);
  }
  for (const std::string& text : options.changes) plan.changes.push_back(assignments.set_at(text, plan.stop));
  std::stable_sort(plan.changes.begin(), plan.changes.end(),
                   [](const TimedWrites& a, const TimedWrites& b) { return a.time < b.time; });
  return plan;
}

/// Reads the chosen outputs of both types in one call each, and puts them in the order of the columns.
class OutputReader {
 public:
  explicit OutputReader(const std::vector<const Variable*>& outputs) : values_(outputs.size()) {
    for (std::size_t column = 0; column < outputs.size(); ++column) {
      const bool is_real = outputs[column]->type == VariableType::kReal;
      (is_real ? real_columns_ : boolean_columns_).push_back(column);
      (is_real ? real_references_ : boolean_references_).push_back(outputs[column]->reference);
    }
    reals_.resize(real_columns_.size());
    booleans_.resize(boolean_columns_.size());
  }

  std::span<const double> read(UnitInstance& unit) {
    if (!reals_.empty()) unit.read(real_references_, std::span(reals_));
    if (!booleans_.empty()) unit.read(boolean_references_, std::span(booleans_));
    for (std::size_t i = 0; i < reals_.size(); ++i) values_[real_columns_[i]] = reals_[i];
    for (std::size_t i = 0; i < booleans_.size(); ++i) values_[boolean_columns_[i]] = booleans_[i] != fmi2False;
    return values_;
  }

 private:
  std::vector<std::size_t> real_columns_, boolean_columns_;
  std::vector<fmi2ValueReference> real_references_, boolean_references_;
  std::vector<fmi2Real> reals_;
  std::vector<fmi2Boolean> booleans_;
  std::vector<double> values_;
};

void write_row(CsvWriter& csv, Summary& summary, const Plan& plan, Milliseconds now, std::span<const double> values,
               bool allow_non_finite) {
  csv.row(now, values);
  summary.add(now, values);
  if (allow_non_finite) return;
  const auto bad = std::find_if_not(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
  if (bad == values.end()) return;
  const Variable& variable = *plan.outputs[static_cast<std::size_t>(bad - values.begin())];
  throw Error(ExitCode::kNonFinite, variable.name + " is " + number_text(*bad) + " at " + seconds_text(now) +
                                        " s (with --allow-non-finite the run goes on)");
}

void stop_if_signalled(Milliseconds now) {
  if (noted_signal() == SIGINT) throw Error(ExitCode::kCancelled, "cancelled at " + seconds_text(now) + " s");
  if (noted_signal() == SIGTERM) throw Error(ExitCode::kTerminated, "terminated at " + seconds_text(now) + " s");
}

/// Steps the unit through the plan. `now` is at any moment the time that the unit has reached.
void simulate(UnitInstance& unit, const Plan& plan, bool allow_non_finite, CsvWriter& csv, Summary& summary,
              Progress& progress, Milliseconds& now) {
  OutputReader outputs(plan.outputs);
  unit.write(plan.start);
  unit.initialize(plan.stop);
  write_row(csv, summary, plan, now, outputs.read(unit), allow_non_finite);

  Milliseconds next_row = std::min(plan.interval, plan.stop);
  auto change = plan.changes.begin();
  while (now < plan.stop) {
    stop_if_signalled(now);
    for (; change != plan.changes.end() && change->time == now; ++change) unit.write(change->writes);
    Milliseconds next = std::min(next_row, now + longest_step(now));
    if (change != plan.changes.end()) next = std::min(next, change->time);
    unit.do_step(now, next);
    now = next;
    if (now == next_row) {
      write_row(csv, summary, plan, now, outputs.read(unit), allow_non_finite);
      next_row = std::min(next_row + plan.interval, plan.stop);
    }
    progress.update(now);
  }
}

std::string state_text(const std::vector<Error>& failures, const Plan& plan, Milliseconds now) {
  if (failures.empty()) return "finished";
  const std::string where = " at " + seconds_text(now) + " s of " + seconds_text(plan.stop) + " s";
  switch (failures.front().code()) {
    case ExitCode::kCancelled:
      return "cancelled" + where;
    case ExitCode::kTerminated:
      return "terminated" + where;
    case ExitCode::kNonFinite:
      return "stopped by a non-finite output" + where;
    case ExitCode::kUnitError:
      return "stopped by an error of the unit" + where;
    default:
      return "stopped by a file error" + where;
  }
}

void print_summary(const ResultFile& file, const Summary& summary, const Plan& plan, Milliseconds now, double wall,
                   const std::string& state) {
  for (const std::string& line : summary.lines()) std::printf("%s\n", line.c_str());
  std::printf("rows            %llu\n", static_cast<unsigned long long>(file.lines() - 1));
  std::printf("variables       %zu\n", plan.outputs.size());
  std::printf("file            %s\n", file.location().c_str());
  std::printf("simulated time  %s s\n", seconds_text(now).c_str());
  std::printf("wall time       %.3f s (%.3g times real time)\n", wall, seconds(now) / wall);
  std::printf("state           %s\n", state.c_str());
}

}  // namespace

ExitCode run(const RunOptions& options) {
  const UnitArchive archive(options.unit);
  const ModelDescription description = load_model_description(archive);
  const Plan plan = make_plan(options, description);
  for (const std::filesystem::path& written : {options.output_file, std::filesystem::path(options.log_file)}) {
    std::error_code ignored;
    if (std::filesystem::equivalent(written, options.unit, ignored)) {
      throw Error(ExitCode::kUsage, "'" + written.string() + "' is the unit itself; give the results another name");
    }
  }

  note_ending_signals();
  ResultFile file(options.output_file);
  std::vector<std::string_view> names;
  for (const Variable* output : plan.outputs) names.push_back(output->name);
  CsvWriter csv(file, names);
  Summary summary(plan.outputs);
  Progress progress(plan.stop, options.is_quiet);

  // Whatever fails, the steps after it that save results and free the unit are still taken.
  std::vector<Error> failures;
  const auto attempt = [&](const auto& action) {
    try {
      action();
    } catch (const Error& error) {
      failures.push_back(error);
    }
  };
  Milliseconds now = 0;
  attempt([&] {
    UnitLog log(options.log_level, options.log_file, [&] { progress.clear(); });
    const UnitLibrary library(archive, description.model_identifier);
    UnitInstance unit(library, description.model_name, description.guid, log);
    attempt([&] { simulate(unit, plan, options.allow_non_finite, csv, summary, progress, now); });
    attempt([&] { unit.finish(); });
    log.close();
  });
  const double wall = progress.elapsed();
  progress.clear();
  attempt([&] {
    if (!file.has_failed()) csv.flush();
    if (file.lines() < 2) return file.discard();
    if (!file.has_failed()) file.publish();
  });

  for (const Error& error : failures) std::cerr << "tessera: " << error.what() << "\n";
  if (file.lines() > 1) print_summary(file, summary, plan, now, wall, state_text(failures, plan, now));
  return failures.empty() ? ExitCode::kOk : failures.front().code();
}

}  // namespace runner
