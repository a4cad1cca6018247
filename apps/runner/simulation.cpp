#include "apps/runner/simulation.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "apps/runner/signals.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

using std::chrono::steady_clock;

/// A time that the option gives or, failing that, the description.
Milliseconds choose_time(const std::optional<std::string>& given, const std::string& described, const char* option,
                         const char* attribute, Milliseconds least) {
  if (given) return parse_time(*given, option, least);
  if (described.empty()) {
    throw Error(ExitCode::kUsage, std::string("the model description proposes no ") + attribute + "; give " + option);
  }
  return parse_time(described, std::string(attribute) + " of the model description, without " + option, least);
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

/// One run of a plan.
class Simulation {
 public:
  /// @param now  is at any moment the time that the unit has reached
  Simulation(const Plan& plan, UnitInstance& unit, const RowSink& row, Milliseconds& now)
      : plan_(plan), unit_(unit), outputs_(plan.outputs), row_(row), now_(now) {}

  void run(const std::function<void(Milliseconds)>& progress) {
    unit_.write(plan_.start);
    unit_.initialize(plan_.stop);
    take_row();

    Milliseconds next_row = std::min(plan_.interval, plan_.stop);
    auto change = plan_.changes.begin();
    while (now_ < plan_.stop) {
      stop_if_asked();
      for (; change != plan_.changes.end() && change->time == now_; ++change) unit_.write(change->writes);
      Milliseconds next = std::min(next_row, now_ + longest_step(now_));
      if (change != plan_.changes.end()) next = std::min(next, change->time);
      unit_.do_step(now_, next);
      now_ = next;
      if (now_ == next_row) {
        take_row();
        next_row = std::min(next_row + plan_.interval, plan_.stop);
      }
      if (progress) progress(now_);
    }
  }

 private:
  void take_row() {
    const std::span<const double> values = outputs_.read(unit_);
    if (now_ >= plan_.record_from) row_(now_, values);
    if (plan_.allow_non_finite) return;
    const auto bad = std::find_if_not(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
    if (bad == values.end()) return;
    const Variable& variable = *plan_.outputs[static_cast<std::size_t>(bad - values.begin())];
    throw Error(ExitCode::kNonFinite, variable.name + " is " + number_text(*bad) + " at " + seconds_text(now_) +
                                          " s (with --allow-non-finite the run goes on)");
  }

  void stop_if_asked() const {
    if (noted_signal() == SIGINT) stop(ExitCode::kCancelled, "cancelled", "");
    if (noted_signal() == SIGTERM) stop(ExitCode::kTerminated, "terminated", "");
    if (plan_.timeout && std::chrono::duration<double>(steady_clock::now() - start_).count() >= *plan_.timeout) {
      stop(ExitCode::kTimedOut, "timed out", " after " + number_text(*plan_.timeout) + " s of wall time (--timeout)");
    }
  }
  [[noreturn]] void stop(ExitCode code, const char* how, const std::string& why) const {
    throw Error(code, std::string(how) + " at " + seconds_text(now_) + " s" + why);
  }

  const Plan& plan_;
  UnitInstance& unit_;
  OutputReader outputs_;
  const RowSink& row_;
  Milliseconds& now_;
  steady_clock::time_point start_ = steady_clock::now();
};

}  // namespace

Plan make_plan(const RunOptions& options, const ModelDescription& description) {
  Plan plan;
  plan.stop = choose_time(options.stop_time, description.stop_time, "--stop-time", "stopTime", 0);
  plan.interval = choose_time(options.output_interval, description.step_size, "--output-interval", "stepSize", 1);
  if (options.record_from) plan.record_from = parse_time(*options.record_from, "--record-from", 0);
  if (plan.record_from > plan.stop) {
    throw Error(ExitCode::kUsage, "--record-from: " + *options.record_from + " s would leave no row, the run ends at " +
                                      seconds_text(plan.stop) + " s");
  }
  if (options.timeout) {
    plan.timeout = parse_number(*options.timeout);
    if (!plan.timeout || !(*plan.timeout > 0.0)) {
      throw Error(ExitCode::kUsage, "--timeout: '" + *options.timeout + "' is no positive number of seconds");
    }
  }
  plan.allow_non_finite = options.allow_non_finite;
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

Played play(const UnitLibrary& library, const ModelDescription& description, const Plan& plan, UnitLog& log,
            const RowSink& row, const std::function<void(Milliseconds)>& progress) {
  Played played;
  attempt(played.failures, [&] {
    UnitInstance unit(library, description.model_name, description.guid, log);
    attempt(played.failures, [&] { Simulation(plan, unit, row, played.reached).run(progress); });
    attempt(played.failures, [&] { unit.finish(); });
  });
  return played;
}

std::string state_text(const Played& played, const Plan& plan) {
  if (played.failures.empty()) return "finished";
  const std::string where = " at " + seconds_text(played.reached) + " s of " + seconds_text(plan.stop) + " s";
  switch (played.failures.front().code()) {
    case ExitCode::kCancelled:
      return "cancelled" + where;
    case ExitCode::kTerminated:
      return "terminated" + where;
    case ExitCode::kTimedOut:
      return "timed out" + where;
    case ExitCode::kNonFinite:
      return "stopped by a non-finite output" + where;
    case ExitCode::kUnitError:
      return "stopped by an error of the unit" + where;
    default:
      return "stopped by a file error" + where;
  }
}

}  // namespace runner
