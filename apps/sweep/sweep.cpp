#include "apps/sweep/sweep.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "apps/runner/errors.h"
#include "apps/runner/result_file.h"
#include "apps/runner/run_record.h"
#include "apps/runner/signals.h"
#include "apps/sweep/job.h"
#include "apps/sweep/journal.h"
#include "apps/sweep/progress.h"
#include "apps/sweep/setup.h"
#include "apps/sweep/table.h"

namespace sweep {
namespace {

using Json = nlohmann::ordered_json;
using runner::Error;
using runner::ExitCode;

/// The plan with what the command line adds.
Plan settled_plan(const SweepOptions& options) {
  Plan plan = read_plan(options.plan);
  runner::RunOptions given = options.run;
  const std::vector<runner::RunSetting> from = runner::run_settings(given), to = runner::run_settings(plan.run);
  for (std::size_t i = 0; i < from.size(); ++i) {
    const bool is_given = std::find(options.given.begin(), options.given.end(), from[i].key) != options.given.end();
    if (is_given || (from[i].key == std::string_view(runner::kUnitKey) && plan.run.unit.empty())) {
      runner::overlay(from[i], to[i]);
    }
  }
  for (const std::string& text : options.keep) add_keep(text, plan);
  plan.run.unit = std::filesystem::absolute(plan.run.unit);
  return plan;
}

std::string status_of(const std::string& row) { return csv_cells(row).at(1); }

/// The points that are not done, and what becomes of them.
class OpenPoints : public Work {
 public:
  OpenPoints(const Setup& setup, Journal& journal, bool retry_failed, bool is_quiet)
      : setup_(setup),
        journal_(journal),
        points_(open_points(setup, journal, retry_failed)),
        progress_(points_.size(), is_quiet) {}

  std::optional<Item> next() override {
    if (next_ == points_.size()) return std::nullopt;
    const std::uint64_t point = points_[next_++];
    return Item{point, to_line(setup_.task(point))};
  }

  void done(std::uint64_t point, const std::string& line) override {
    const Outcome outcome = outcome_of(line);
    if (outcome.status == kUnplayable) throw Error(ExitCode::kFile, outcome.reason);
    journal_.append(point, setup_.row(point, outcome));
    progress_.count(outcome.status == kOk);
  }

  bool goes_on() override {
    progress_.update();
    return runner::noted_signal() == 0;
  }

  Progress& progress() { return progress_; }
  bool are_all_played() const { return progress_.played() == points_.size(); }

 private:
  static std::vector<std::uint64_t> open_points(const Setup& setup, const Journal& journal, bool retry_failed) {
    std::vector<std::uint64_t> points;
    for (std::uint64_t point = 1; point <= setup.count(); ++point) {
      const auto row = journal.rows().find(point);
      if (row == journal.rows().end() || (retry_failed && status_of(row->second) != kOk)) points.push_back(point);
    }
    return points;
  }

  const Setup& setup_;
  Journal& journal_;
  std::vector<std::uint64_t> points_;
  std::size_t next_ = 0;
  Progress progress_;
};

/// How a sweep went.
struct Balance {
  std::map<std::string, std::uint64_t> statuses;  ///< how many points have which
  std::uint64_t done = 0, failed = 0;
  std::uint64_t played = 0;  ///< by this job
  double wall_time = 0.0;    ///< s, of this job
  int players = 1;

  Balance(const Journal& journal, const Progress& progress, int player_count)
      : done(journal.rows().size()), played(progress.played()), wall_time(progress.elapsed()), players(player_count) {
    for (const auto& [point, row] : journal.rows()) ++statuses[status_of(row)];
    failed = done - statuses[kOk];
  }

  void print(std::uint64_t count) const {
    const auto number = [](std::uint64_t value) { return static_cast<unsigned long long>(value); };
    std::printf("points          %llu of %llu done, %llu of them now\n", number(done), number(count), number(played));
    std::printf("failed          %llu", number(failed));
    for (const auto& [status, points] : statuses) {
      if (status != kOk) std::printf(", %llu %s", number(points), status.c_str());
    }
    std::printf("\nwall time       %.3f s\n", wall_time);
    if (played == 0) return;
    const double per_hour = 3600.0 * static_cast<double>(played) / wall_time;
    std::printf("throughput      %.1f runs per hour and core (%d at a time)\n", per_hour / players, players);
  }
};

void write_results(const std::filesystem::path& name, const Setup& setup, const Journal& journal) {
  runner::ResultFile file(name);
  file.append(setup.header() + "\n");
  for (const auto& [point, row] : journal.rows()) file.append(row + "\n");
  file.publish();
}

void write_record(const std::filesystem::path& name, const Setup& setup, const Balance& balance,
                  std::chrono::system_clock::time_point started) {
  Json record = setup.record();
  record["points"] = setup.count();
  record["failed"] = balance.failed;
  record["startedAt"] = runner::utc_text(started);
  record["wallTime"] = balance.wall_time;
  record["pointsPlayed"] = balance.played;
  record["players"] = balance.players;
  runner::ResultFile file(name);
  file.append(record.dump(1) + "\n");
  file.publish();
}

void print_plan(const Setup& setup) {
  std::printf("points          %llu\n", static_cast<unsigned long long>(setup.count()));
  for (const Column& column : setup.columns()) {
    std::printf("%-15s %s [%s]\n", column.is_input ? "input" : "kept", column.name.c_str(), column.unit.c_str());
  }
}

}  // namespace

ExitCode sweep(const SweepOptions& options, Crew& crew) {
  const auto started = std::chrono::system_clock::now();
  const Setup setup(settled_plan(options));
  if (setup.count() > kManyPoints && !options.yes) {
    throw Error(ExitCode::kUsage, options.plan.string() + ": the plan has " + std::to_string(setup.count()) +
                                      " points; more than " + std::to_string(kManyPoints) + " need --yes");
  }
  if (options.is_dry) {
    print_plan(setup);
    return ExitCode::kOk;
  }

  runner::note_ending_signals();
  std::error_code problem;
  std::filesystem::create_directories(options.folder, problem);
  if (problem) {
    throw Error(ExitCode::kFile, "cannot make the folder '" + options.folder.string() + "': " + problem.message());
  }
  Journal journal(options.folder / "journal.csv", setup.header(), setup.text(), options.restart);
  OpenPoints points(setup, journal, options.retry_failed, options.is_quiet);
  const std::filesystem::path results = options.folder / "results.csv";
  const std::filesystem::path record = runner::record_path(results);
  if (!points.are_all_played()) {  // an older table would not tell of these rows
    for (const std::filesystem::path& file : {record, results}) std::filesystem::remove(file);
  }
  crew.play(setup.job_line(), setup.timeout(), points);
  journal.sync();
  points.progress().clear();
  const Balance balance(journal, points.progress(), crew.players());
  balance.print(setup.count());
  if (!points.are_all_played()) {
    std::cerr << "tessera-sweep: ended by a signal; the same command plays the points that are left\n";
    return runner::noted_signal() == SIGINT ? ExitCode::kCancelled : ExitCode::kTerminated;
  }

  if (!exists(record)) {
    write_results(results, setup, journal);
    write_record(record, setup, balance, started);
  }
  std::printf("file            %s\n", results.c_str());
  return balance.failed == 0 ? ExitCode::kOk : ExitCode::kFindings;
}

}  // namespace sweep
