// The child's side of a Player.

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <numeric>
#include <span>

#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/simulation.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"
#include "apps/runner/unit_library.h"
#include "apps/runner/unit_log.h"
#include "apps/sweep/keeper.h"
#include "apps/sweep/player.h"
#include "apps/sweep/scalars.h"

namespace sweep {
namespace {

using runner::Error;
using runner::ExitCode;

/// The loaded unit, and the job settled with it.
class Stage {
 public:
  explicit Stage(const Job& job)
      : job_(job),
        archive_(job.run.unit),
        description_(runner::load_model_description(archive_)),
        library_(archive_, description_.model_identifier) {
    const runner::Plan plan = runner::make_plan(job.run, description_);
    const auto keep = [&](const std::string& signal, Take take) {
      const auto at = std::find_if(plan.outputs.begin(), plan.outputs.end(),
                                   [&](const runner::Variable* output) { return output->name == signal; });
      if (at == plan.outputs.end()) throw Error(ExitCode::kUsage, "the unit has no output '" + signal + "'");
      columns_.push_back({static_cast<std::size_t>(at - plan.outputs.begin()), take});
    };
    for (const Job::Value& value : job.keep) keep(value.signal, value.take);
    for (const std::string& name : job.scalars) {
      scalars_.push_back(find_scalar(name));
      for (const Scalar::Source& source : scalars_.back()->sources) keep(source.signal, source.take);
    }
    // An input opens its gate; where the plan sets that gate itself, this is to come later and to count.
    order_.resize(job.inputs.size());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::stable_partition(order_.begin(), order_.end(), [&](std::size_t i) {
      return description_.find(job.inputs[i])->type != runner::VariableType::kBoolean;
    });
  }

  Outcome play(const Task& task) const {
    runner::RunOptions options = job_.run;
    for (const std::size_t i : order_) options.start_values.push_back(job_.inputs[i] + "=" + task[i]);
    const runner::Plan plan = runner::make_plan(options, description_);
    runner::UnitLog log(runner::LogLevel::kNothing, "", {});
    Keeper keeper(columns_);
    const runner::Played played =
        runner::play(library_, description_, plan, log,
                     [&](runner::Milliseconds time, std::span<const double> row) { keeper.add(time, row); });
    if (!played.failures.empty()) {
      const Error& failure = played.failures.front();
      return {failure.code() == ExitCode::kNonFinite ? "non_finite" : "unit_error", failure.what(), {}};
    }

    Outcome outcome = {kOk, "", {}};
    const std::vector<double> values = keeper.values();
    for (std::size_t i = 0; i < job_.keep.size(); ++i) outcome.values.push_back(runner::number_text(values[i]));
    std::span<const double> sources = std::span(values).subspan(job_.keep.size());
    for (const Scalar* scalar : scalars_) {
      outcome.values.push_back(runner::number_text(scalar->value(sources.first(scalar->sources.size()))));
      sources = sources.subspan(scalar->sources.size());
    }
    return outcome;
  }

 private:
  Job job_;
  runner::UnitArchive archive_;
  runner::ModelDescription description_;
  runner::UnitLibrary library_;
  std::vector<Keeper::Column> columns_;
  std::vector<const Scalar*> scalars_;
  std::vector<std::size_t> order_;  ///< in which the inputs are set
};

bool answer(const Outcome& outcome) {
  const std::string line = to_line(outcome) + "\n";
  return send(STDIN_FILENO, line.data(), line.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(line.size());
}

}  // namespace

int play_points() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  pollfd parent = {STDIN_FILENO, 0, 0};
  if (poll(&parent, 1, 0) > 0) return 0;                                       // it died before that
  close_range(STDERR_FILENO + 1, ~0U, 0);                                      // what the parent's libraries left open
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) signal(number, SIG_IGN);  // the parent decides
  std::cerr.rdbuf(nullptr);  // what there is to warn of, the parent told once for all points

  std::string line;
  if (!std::getline(std::cin, line)) return 0;
  const Job job = job_of(line);
  std::optional<Stage> stage;
  while (std::getline(std::cin, line)) {
    Outcome outcome;
    try {
      if (!stage) stage.emplace(job);
      outcome = stage->play(task_of(line));
    } catch (const Error& error) {
      outcome = {kUnplayable, error.what(), {}};
    }
    if (!answer(outcome)) return 1;
  }
  return 0;
}

}  // namespace sweep
