#include "apps/runner/command_line.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <map>
#include <string>

#include "apps/runner/errors.h"
#include "apps/runner/info.h"
#include "apps/runner/props.h"
#include "apps/runner/run.h"
#include "apps/runner/validate.h"

namespace runner {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, LogLevel> kLogLevels = {{"error", LogLevel::kError},
                                                    {"warning", LogLevel::kWarning},
                                                    {"info", LogLevel::kInfo},
                                                    {"debug", LogLevel::kDebug}};

/// The unit that is shipped with the program: it lies beside it.
fs::path default_unit() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? "Tessera.fmu" : program.parent_path() / "Tessera.fmu";
}

void add_unit(CLI::App& command, fs::path& unit) {
  command.add_option("UNIT", unit, "the unit, a .fmu file; without it the Tessera.fmu beside this program")
      ->type_name("FILE");
}

void add_run_options(CLI::App& command, RunOptions& options, std::string& log_level) {
  add_unit(command, options.unit);
  command.add_option("--stop-time", options.stop_time, "end of the run; without it as the unit proposes")
      ->type_name("SECONDS");
  command
      .add_option("--output-interval", options.output_interval, "time between rows; without it as the unit proposes")
      ->type_name("SECONDS");
  command
      .add_option("--start-value", options.start_values,
                  "set a parameter before the run (repeatable, in the order given)")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  command.add_option("--set-at", options.changes, "set one during the run, for the next model step on (repeatable)")
      ->type_name("TIME:NAME=VALUE")
      ->allow_extra_args(false);
  command.add_flag("--keep-gates", options.keep_gates, "leave the gates of parameters that are set as they are");
  command
      .add_option("--output-variable", options.output_variables,
                  "write only the outputs that match, with *, ? and [...] (repeatable); without it all")
      ->type_name("PATTERN")
      ->allow_extra_args(false);
  command.add_option("--output-file", options.output_file, "where the results go; without it results.csv")
      ->type_name("FILE");
  command.add_option("--log-level", log_level, "how much of the unit's messages is told; without it warning")
      ->check(CLI::IsMember(kLogLevels))
      ->type_name("LEVEL");
  command
      .add_option("--log-file", options.log_file,
                  "write the unit's messages there; standard error then gets warnings and errors only")
      ->type_name("FILE");
  command.add_flag("--quiet", options.is_quiet, "no progress on standard error");
  command.add_flag("--allow-non-finite", options.allow_non_finite, "go on when an output is not a finite number");
  command.footer(
      "Times are whole milliseconds. NAME is a variable of the unit (see 'tessera info'), the value reference\n"
      "of a Real such as 148, or gateN for the Boolean with value reference N. VALUE may carry a unit that the\n"
      "model description knows (98kPa). Setting X_set also sets its gate X_gate, if there is one, to true.\n\n"
      "Examples:\n"
      "  tessera run\n"
      "  tessera run --stop-time 600 --output-interval 0.1 --output-file first.csv\n"
      "  tessera run --start-value 148=20 --set-at 60:gate2=false --output-variable 'stack*'\n"
      "  tessera run other.fmu --start-value ambient.pressure_set=98kPa --log-level info --log-file messages.txt");
}

void add_props_options(CLI::App& command, PropsOptions& options) {
  command.add_option("FLUID", options.fluid, "the fluid")->type_name("");
  command.add_option("PROPERTY", options.properties, "what to compute, one or several names")->type_name("");
  for (std::size_t i = 0; i < kInputCount; ++i) {
    const Input& input = inputs()[i];
    command.add_option(std::string("--") + input.name, options.inputs[i], input.text)
        ->type_name(i == kX ? "NUMBER" : input.units[0].name);
  }
  command.add_flag("--all", options.all, "compute all properties of the fluid");
  command.add_option("--table", options.table, "print CSV, with one of the inputs above from START to STOP")
      ->type_name("VAR=START:STOP:STEP");
  command.add_option("--file", options.file, "read the fluid from this table or source file")->type_name("FILE");
  command
      .add_option("--type", options.type,
                  "of the fluid in the file: gas, moist_air, brine or liquid; a table file may tell it by its name "
                  "(gasIDG.fdb)")
      ->type_name("TYPE");
  command.add_flag("--list", options.list, "list fluids, inputs, properties and units; with FLUID those of its type");
  command.footer(
      "Numbers are in SI units or carry a unit (25degC, 1.2bar, 8g/kg); in --table it stands at the end\n"
      "(T=-20:90:5degC). Without --P the pressure is 101325 Pa. Water is liquid or vapour, as T and P have it;\n"
      "with --x it is what x says, without --P at saturation. A state outside the range of the fluid is noted on\n"
      "standard error, with what the library used instead.\n\n"
      "Examples:\n"
      "  tessera props --list\n"
      "  tessera props Moist_Air h --T 300 --P 101325 --w 0.01\n"
      "  tessera props Glycerol_Water --all --T 60degC --P 1.5bar --concentration 50\n"
      "  tessera props H2_IDG cp mu --table T=250:1050:10\n"
      "  tessera props Water h s --T 100degC --x 0.9\n"
      "  tessera props Oil_32 v mu --T 40degC --file tables/liquids.fdb\n"
      "  tessera props Argon cp --T 300 --file sources/argon.txt --type gas");
}

ExitCode mapped(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {  // --help or --version
    app.exit(error);
    return ExitCode::kOk;
  }
  throw Error(ExitCode::kUsage, std::string(error.what()) + " (see 'tessera --help')");
}

}  // namespace

ExitCode run_command_line(int argc, char** argv) {
  CLI::App app("Plays a simulation unit (FMI 2.0 co-simulation) and writes its outputs as CSV.", "tessera");
  app.set_version_flag("--version", "tessera " TESSERA_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Exit codes: 0 done, 1 validate has findings, 2 usage, 3 error of the unit, 4 non-finite output,\n"
      "5 file or archive, 130 cancelled (SIGINT), 143 terminated (SIGTERM).\n\n"
      "Examples:\n"
      "  tessera run --stop-time 600\n"
      "  tessera info --filter 'stack*'\n"
      "  tessera validate Tessera.fmu\n"
      "  tessera props Moist_Air h --T 300 --P 101325 --w 0.01\n"
      "'tessera COMMAND --help' tells more.");

  RunOptions run_options;
  std::string log_level = "warning";
  CLI::App& run_command = *app.add_subcommand("run", "play the unit from time 0 and write its outputs as CSV");
  add_run_options(run_command, run_options, log_level);

  InfoOptions info_options;
  CLI::App& info_command = *app.add_subcommand("info", "list the variables of the unit");
  add_unit(info_command, info_options.unit);
  info_command
      .add_option("--filter", info_options.filters,
                  "list only variables whose names match, with *, ? and [...] (repeatable)")
      ->type_name("PATTERN")
      ->allow_extra_args(false);
  info_command.add_flag("--json", info_options.as_json, "print JSON instead of a table");
  info_command.footer("Examples:\n  tessera info --filter '*_set' --filter '*_gate'\n  tessera info --json other.fmu");

  fs::path validated;
  CLI::App& validate_command = *app.add_subcommand("validate", "check the unit's archive, description and binary");
  add_unit(validate_command, validated);
  validate_command.footer(
      "Every problem is a line on standard output; the exit code is then 1.\n\n"
      "Examples:\n  tessera validate\n  tessera validate other.fmu");

  PropsOptions props_options;
  CLI::App& props_command = *app.add_subcommand("props", "compute properties of a fluid");
  add_props_options(props_command, props_options);

  for (fs::path* unit : {&run_options.unit, &info_options.unit, &validated}) *unit = default_unit();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return mapped(app, error);
  }

  if (run_command.parsed()) {
    run_options.log_level = kLogLevels.at(log_level);
    return run(run_options);
  }
  if (validate_command.parsed()) return validate(validated);
  if (props_command.parsed()) {
    props(props_options);
    return ExitCode::kOk;
  }
  info(info_options);
  return ExitCode::kOk;
}

}  // namespace runner
