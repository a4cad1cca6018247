#include "apps/runner/run.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/progress.h"
#include "apps/runner/result_file.h"
#include "apps/runner/result_writer.h"
#include "apps/runner/run_record.h"
#include "apps/runner/signals.h"
#include "apps/runner/simulation.h"
#include "apps/runner/statistics.h"
#include "apps/runner/summary.h"
#include "apps/runner/table.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"
#include "apps/runner/unit_library.h"

namespace runner {
namespace {

/// The rows of a run and what is made of them.
class Rows {
 public:
  Rows(const RunOptions& options, const Plan& plan) : plan_(plan), file_(options.output_file), summary_(plan.outputs) {
    std::vector<std::string_view> names;
    for (const Variable* output : plan.outputs) names.push_back(output->name);
    writer_ = make_result_writer(options.output_file, file_, names);
    if (options.show_stats) statistics_.emplace(names.size());
    if (!options.reference_file.empty()) {
      table_.emplace();
      table_->names.assign(names.begin(), names.end());
      table_->columns.resize(names.size());
    }
  }

  void add(Milliseconds time, std::span<const double> values) {
    writer_->row(time, values);
    summary_.add(time, values);
    if (statistics_) statistics_->add(time, values);
    if (!table_) return;
    for (std::size_t i = 0; i < values.size(); ++i) table_->columns[i].push_back(values[i]);
    table_->time.push_back(seconds(time));  // the memory has sufficed for the whole row
  }
  void finish() {
    if (!file_.has_failed()) writer_->finish();
  }
  std::uint64_t count() const { return writer_->rows(); }
  ResultFile& file() { return file_; }
  const Summary& summary() const { return summary_; }
  const ResultTable& table() const { return *table_; }

  void print_summary() const {
    for (const Summary::Figure& figure : summary_.figures()) {
      std::printf("%-15s %s\n", figure.title.c_str(), figure.text.c_str());
    }
    std::printf("rows            %llu\n", static_cast<unsigned long long>(count()));
    std::printf("variables       %zu\n", plan_.outputs.size());
    std::printf("file            %s\n", file_.location().c_str());
  }

  void print_statistics() const {
    if (!statistics_) return;
    std::vector<std::vector<std::string>> table = {{"output", "least", "largest", "mean", "last", "unit"}};
    for (std::size_t i = 0; i < plan_.outputs.size(); ++i) {
      const Statistics::Signal& signal = statistics_->signal(i);
      std::vector<std::string> row = {plan_.outputs[i]->name};
      for (const double value : {signal.least, signal.largest, statistics_->mean(i), signal.last}) {
        char text[kNumberWidth];
        std::snprintf(text, sizeof text, "%.6g", value);
        row.emplace_back(text);
      }
      row.push_back(plan_.outputs[i]->unit);
      table.push_back(row);
    }
    std::printf("\n%s", table_text(table, "lrrrrl").c_str());
  }

 private:
  const Plan& plan_;
  ResultFile file_;
  std::unique_ptr<ResultWriter> writer_;
  Summary summary_;
  std::optional<Statistics> statistics_;
  std::optional<ResultTable> table_;  ///< for the comparison
};

void refuse_to_overwrite(const RunOptions& options) {
  namespace fs = std::filesystem;
  const fs::path log = options.log_file;
  std::error_code ignored;
  const auto refuse = [&](const fs::path& written, const char* what) {
    throw Error(ExitCode::kUsage, "'" + written.string() + "' is " + what + "; give " +
                                      (written == log ? "the log" : "the results") + " another name");
  };
  for (const fs::path& written : {options.output_file, record_path(options.output_file), log}) {
    if (fs::equivalent(written, options.unit, ignored)) refuse(written, "the unit itself");
    if (fs::equivalent(written, options.reference_file, ignored)) refuse(written, "the reference");
  }
  if (log.empty() || fs::is_other(log, ignored)) return;
  const auto is_log = [&](const fs::path& name) {
    return fs::absolute(name, ignored).lexically_normal() == fs::absolute(log, ignored).lexically_normal();
  };
  for (const fs::path& results : {options.output_file, record_path(options.output_file)}) {
    if (is_log(results) || is_log(results.string() + ".part")) refuse(log, "where the results go");
  }
}

std::optional<Comparison> read_reference(const RunOptions& options, const Plan& plan) {
  if (options.reference_file.empty()) return std::nullopt;
  std::optional<Comparison> comparison(std::in_place, read_result_csv(options.reference_file), options.tolerances,
                                       options.output_variables);
  if (plan.record_from > 0) comparison->start_at(seconds(plan.record_from));
  return comparison;
}

/// @return the record's own exit code, or why it could not be written
ExitCode write_record(ResultFile& file, const RunRecord& record) {
  try {
    file.append(record_text(record));
    file.publish();
  } catch (const Error& error) {
    std::cerr << "tessera: " << error.what() << "\n";
    file.discard();
    if (record.exit_code == ExitCode::kOk) return error.code();
  }
  return record.exit_code;
}

}  // namespace

ExitCode run(const RunOptions& options) {
  const UnitArchive archive(options.unit);
  const ModelDescription description = load_model_description(archive);
  const Plan plan = make_plan(options, description);
  refuse_to_overwrite(options);
  const std::optional<Comparison> comparison = read_reference(options, plan);

  Rows rows(options, plan);
  std::optional<ResultFile> record_file;
  if (!rows.file().is_direct()) record_file.emplace(record_path(options.output_file));
  note_ending_signals();  // not before a pipe has its reader, which may never come
  const auto started = std::chrono::system_clock::now();
  Progress progress(plan.stop, options.is_quiet ? ProgressMode::kNone : options.progress);

  Played played;
  std::size_t warnings = 0;
  std::size_t errors = 0;
  attempt(played.failures, [&] {
    UnitLog log(options.log_level, options.log_file, [&] { progress.clear(); });
    const UnitLibrary library(archive, description.model_identifier);
    played = play(
        library, description, plan, log,
        [&](Milliseconds time, std::span<const double> values) { rows.add(time, values); },
        [&](Milliseconds now) { progress.update(now); });
    warnings = log.warning_count();
    errors = log.error_count();
    log.close();
  });
  const double wall = progress.elapsed();
  progress.clear();
  attempt(played.failures, [&] { rows.finish(); });
  const bool has_rows = rows.count() > 0;
  attempt(played.failures, [&] {
    if (!has_rows) return rows.file().discard();
    if (rows.file().has_failed()) return;
    rows.file().publish();
    std::error_code ignored;
    if (record_file) std::filesystem::remove(record_path(options.output_file), ignored);  // it tells of older results
  });
  for (const Error& error : played.failures) std::cerr << "tessera: " << error.what() << "\n";
  if (played.reached > 0 && played.reached < plan.record_from) {
    std::cerr << "tessera: the run ended ahead of its first row, so that there is no '" << options.output_file.string()
              << "'\n";
  }
  ExitCode code = played.failures.empty() ? ExitCode::kOk : played.failures.front().code();
  if (!has_rows) return code;

  if (rows.file().is_standard_output()) dup2(STDERR_FILENO, STDOUT_FILENO);  // nothing between the rows
  rows.print_summary();
  std::printf("simulated time  %s s\n", seconds_text(played.reached).c_str());
  std::printf("wall time       %.3f s (%.3g times real time)\n", wall, seconds(played.reached) / wall);
  std::printf("state           %s\n", state_text(played, plan).c_str());
  rows.print_statistics();
  if (comparison) {
    std::printf("\n");
    const ExitCode agreement = comparison->print(rows.table());
    if (code == ExitCode::kOk) code = agreement;
  }
  if (!record_file || rows.file().has_failed()) return code;
  return write_record(*record_file, {.options = options,
                                     .description = description,
                                     .plan = plan,
                                     .played = played,
                                     .summary = rows.summary(),
                                     .started = started,
                                     .wall_time = wall,
                                     .rows = rows.count(),
                                     .warnings = warnings,
                                     .errors = errors,
                                     .exit_code = code});
}

}  // namespace runner
