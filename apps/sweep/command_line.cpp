#include "apps/sweep/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "apps/runner/errors.h"
#include "apps/sweep/sweep.h"

namespace sweep {
namespace {

using runner::Error;
using runner::ExitCode;
using runner::RunSetting;

/// The settings of a run that all points may share.
constexpr std::array<std::string_view, 8> kShared = {"unit",        "stop-time", "output-interval", "record-from",
                                                     "start-value", "set-at",    "keep-gates",      "allow-non-finite"};

CLI::Option* add_setting(CLI::App& app, const RunSetting& setting) {
  const std::string name = "--" + std::string(setting.key);
  return std::visit(
      [&](const auto& target) -> CLI::Option* {
        using Target = std::decay_t<decltype(target)>;
        if constexpr (std::is_same_v<Target, bool*>) {
          return app.add_flag(name, *target, setting.help);
        } else if constexpr (std::is_same_v<Target, runner::Repeated>) {
          return app.add_option(name, *target.target, setting.help)
              ->type_name(setting.type_name)
              ->allow_extra_args(false);
        } else if constexpr (std::is_same_v<Target, std::filesystem::path*> ||
                             std::is_same_v<Target, std::optional<std::string>*>) {
          return app.add_option(name, *target, setting.help)->type_name(setting.type_name);
        } else {
          throw std::logic_error(name + " is no setting of a sweep");
        }
      },
      setting.target);
}

}  // namespace

ExitCode run_command_line(int argc, char** argv, Crew& crew) {
  CLI::App app("Plays a simulation unit once for each point of a plan and writes one table of all.", "tessera-sweep");
  app.set_version_flag("--version", "tessera-sweep " TESSERA_VERSION);
  SweepOptions options;
  options.run.unit = runner::default_unit();
  app.add_option("PLAN", options.plan, "what is varied and what is kept: a TOML or CSV file")
      ->required()
      ->type_name("FILE");
  app.add_option("-o,--output", options.folder, "where journal.csv and, at the end, results.csv go")
      ->required()
      ->type_name("DIR");
  app.add_option("--point-timeout", options.run.timeout, "give up a point after this wall time; without it never")
      ->type_name("SECONDS");
  app.add_option("--keep", options.keep,
                 "keep the last, min, max, mean, integral or rise of an output, or a scalar "
                 "(repeatable)")
      ->type_name("SIGNAL=TAKE")
      ->allow_extra_args(false);
  app.add_flag("--yes", options.yes, "play more than 10000 points");
  app.add_flag("--retry-failed", options.retry_failed, "play points that failed again");
  app.add_flag("--restart", options.restart, "drop what DIR holds and play all points");
  app.add_flag("--dry-run", options.is_dry, "check the plan, tell its points and columns, play nothing");
  app.add_flag("--quiet", options.is_quiet, "no progress on standard error");
  std::vector<std::pair<std::string, CLI::Option*>> settings;
  for (const RunSetting& setting : runner::run_settings(options.run)) {
    if (std::find(kShared.begin(), kShared.end(), setting.key) == kShared.end()) continue;
    settings.emplace_back(setting.key, add_setting(app, setting)->group("For all points, instead of or besides [run]"));
  }
  app.footer(R"(A plan:
  [run]                                 # for all points: keys as in 'tessera run --config'
  stop-time = 600
  start-value.ambient.pressure_set = "98kPa"
  [grid]                                # each combination, the last one changes fastest
  ambient.temperature_set = [-10, 10, 30]
  power.demand_set = {from = 20, to = 60, step = 10}      # or count = 5; with unit = "kW" if need be
  [sample]                              # Latin hypercube; with a grid, at each point of it
  count = 50
  seed = 1
  vehicle.speed_set = {from = 50, to = 120}
  [keep]                                # without it the scalars that the unit has
  stack.power = ["mean", "max"]         # or last, min, integral, rise: columns stack.power.mean, ...
  hottest = {signal = "coolant.stack_outlet_temperature", take = "max"}
  scalars = ["hydrogen_used", "distance"]
A CSV plan has names of inputs in its first line and a point in each further one.
Scalars: distance, hydrogen_used, hydrogen_per_100km, stack_energy, stack_energy_per_hydrogen.

Under mpirun, process 0 hands the points out and the others play one at a time each: start one process
more than there are cores. Without mpirun the points are played one after the other.
The same command again plays only what is left. A point that fails keeps its row with the reason.
What is kept of an output is made of its rows, one every output-interval.

Exit codes: 0 all points are well, 1 some failed, 2 usage or plan, 5 file or archive, 130 cancelled (SIGINT),
143 terminated (SIGTERM); mpirun answers 1 if a signal ended it.

Examples:
  tessera-sweep plan.toml -o study
  tessera-sweep plan.toml -o study --dry-run
  mpirun --oversubscribe -n 9 tessera-sweep plan.toml -o study --point-timeout 300
  tessera-sweep plan.toml -o study --retry-failed
  tessera-sweep points.csv -o study --stop-time 600 --keep stack.power=mean --keep hydrogen_used)");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
      throw Error(ExitCode::kUsage, std::string(error.what()) + " (see 'tessera-sweep --help')");
    }
    app.exit(error);  // --help or --version
    return ExitCode::kOk;
  }
  for (const auto& [key, option] : settings) {
    if (option->count() > 0) options.given.push_back(key);
  }
  if (options.run.timeout) options.given.emplace_back("timeout");
  return sweep(options, crew);
}

}  // namespace sweep
