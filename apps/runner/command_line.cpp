#include "apps/runner/command_line.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "apps/runner/compare.h"
#include "apps/runner/completion.h"
#include "apps/runner/config.h"
#include "apps/runner/errors.h"
#include "apps/runner/info.h"
#include "apps/runner/props.h"
#include "apps/runner/report.h"
#include "apps/runner/run.h"
#include "apps/runner/validate.h"

namespace runner {
namespace {

namespace fs = std::filesystem;

void add_unit(CLI::App& command, fs::path& unit) {
  unit = default_unit();
  command.add_option("UNIT", unit, "the unit, a .fmu file; without it the Tessera.fmu beside this program")
      ->type_name("FILE");
}

/// Adds an option for a setting; what it is given goes to the setting's target.
class OptionAdder {
 public:
  OptionAdder(CLI::App& command, const RunSetting& setting) : command_(command), setting_(setting) {}

  CLI::Option* add() {
    CLI::Option* option = std::visit(*this, setting_.target);
    if (!std::holds_alternative<bool*>(setting_.target)) option->type_name(setting_.type_name);
    return option;
  }

  CLI::Option* operator()(bool* target) { return command_.add_flag(name(), *target, setting_.help); }
  CLI::Option* operator()(double* target) {
    return add_reader([=, option = name()](const std::string& text) {
      const std::optional<double> value = parse_tolerance(text);
      if (!value) throw Error(ExitCode::kUsage, option + ": '" + text + "': " + kToleranceNeeds);
      *target = *value;
    });
  }
  CLI::Option* operator()(const Repeated& repeated) {
    return command_.add_option(name(), *repeated.target, setting_.help)->allow_extra_args(false);
  }
  template <class Value>
  CLI::Option* operator()(const Choice<Value>& choice) {
    std::vector<std::string> names;
    for (const auto& [text, value] : choice.values) names.push_back(text);
    const auto read = [choice](const std::string& given) {
      for (const auto& [text, value] : choice.values) {
        if (text == given) *choice.target = value;
      }
    };
    return add_reader(read)->check(CLI::IsMember(names));
  }
  template <class Value>
  CLI::Option* operator()(Value* target) {
    return command_.add_option(name(), *target, setting_.help);
  }

 private:
  std::string name() const {
    const std::string key = setting_.key;
    return key == kUnitKey ? "UNIT" : "--" + key;
  }
  CLI::Option* add_reader(const std::function<void(const std::string&)>& read) {
    return command_.add_option_function<std::string>(name(), read, setting_.help);
  }

  CLI::App& command_;
  const RunSetting& setting_;
};

std::vector<CLI::Option*> add_settings(CLI::App& command, const std::vector<RunSetting>& settings) {
  std::vector<CLI::Option*> options;
  options.reserve(settings.size());
  for (const RunSetting& setting : settings) options.push_back(OptionAdder(command, setting).add());
  return options;
}

/// The command `run`: its options, given on the command line and in a file.
class RunCommand {
 public:
  explicit RunCommand(CLI::App& app)
      : command_(*app.add_subcommand("run", "play the unit from time 0 and write its outputs")) {
    given_.unit = default_unit();
    options_ = add_settings(command_, run_settings(given_));
    command_.add_option("--config", config_, "read options from this TOML file; those given here come first")
        ->type_name("FILE");
    command_.footer(
        "Times are whole milliseconds. NAME is a variable of the unit (see 'tessera info'), the value reference\n"
        "of a Real such as 148, or gateN for the Boolean with value reference N. VALUE may carry a unit that the\n"
        "model description knows (98kPa). Setting X_set also sets its gate X_gate, if there is one, to true.\n"
        "How the run came about is written beside the results: of first.csv it is in first.meta.json.\n\n"
        "The file of --config has the long options without dashes as keys, start values as a table, and changes\n"
        "during the run as a list; start values and changes on the command line follow those of the file:\n"
        "  stop-time = 600\n"
        "  output-variable = [\"stack.*\", \"vehicle.*\"]\n"
        "  start-value = {ambient.temperature_set = -20, ambient.pressure_set = \"98kPa\"}\n"
        "  set-at = [{time = 60, name = \"power.demand_set\", value = \"30kW\"}]\n\n"
        "Examples:\n"
        "  tessera run\n"
        "  tessera run --stop-time 600 --output-interval 0.1 --output-file first.csv\n"
        "  tessera run --start-value 148=20 --set-at 60:gate2=false --output-variable 'stack*'\n"
        "  tessera run other.fmu --start-value ambient.pressure_set=98kPa --log-level info --log-file messages.txt\n"
        "  tessera run --config winter.toml --stop-time 300 --output-file winter.npz --show-stats\n"
        "  tessera run --record-from 1000 --timeout 60 --progress=json\n"
        "  tessera run --reference-file first.csv --rtol 1e-4 --tolerance 'stack.*=atol:0.5'");
  }

  bool is_parsed() const { return command_.parsed(); }

  ExitCode run() {
    if (config_.empty()) return runner::run(given_);
    RunOptions merged;
    merged.unit = default_unit();
    read_settings(parse_toml(config_), config_, merged);
    const std::vector<RunSetting> from = run_settings(given_);
    const std::vector<RunSetting> to = run_settings(merged);
    for (std::size_t i = 0; i < from.size(); ++i) {
      if (options_[i]->count() > 0) overlay(from[i], to[i]);
    }
    return runner::run(merged);
  }

 private:
  CLI::App& command_;
  RunOptions given_;
  fs::path config_;
  std::vector<CLI::Option*> options_;  ///< in the order of the settings
};

void add_compare_options(CLI::App& command, CompareOptions& options) {
  command.add_option("RESULT", options.result, "the CSV file to judge")->type_name("FILE")->required();
  command.add_option("REFERENCE", options.reference, "the CSV file that it must agree with")
      ->type_name("FILE")
      ->required();
  add_settings(command, tolerance_settings(options.tolerances));
  command
      .add_option("--signal", options.signals,
                  "compare only the signals that match, with *, ? and [...] (repeatable); without it all")
      ->type_name("PATTERN")
      ->allow_extra_args(false);
  command.footer(
      "At each time a value may be off by atol, or by rtol times the absolute value of the reference if that is\n"
      "more. Of each signal the sample is told that comes closest to its limit or goes farthest beyond it, the\n"
      "worst signal first. A signal or a time that one of the files lacks is a finding; with findings the exit\n"
      "code is 1. Values that are not finite agree with their own kind only.\n\n"
      "Examples:\n"
      "  tessera compare new.csv old.csv\n"
      "  tessera compare new.csv old.csv --rtol 1e-4 --tolerance 'stack.*=rtol:1e-3,atol:0.5'\n"
      "  tessera compare new.csv old.csv --signal 'vehicle.*'");
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

void add_report_options(CLI::App& command, ReportOptions& options) {
  command.add_option("RESULTS", options.results, "CSV files of runs, laid over each other, or the table of one study")
      ->type_name("FILE")
      ->required();
  command.add_option("-o,--output-file", options.page, "where the page goes; without it report.html")
      ->type_name("FILE");
  command.footer(
      "The page needs nothing but a browser. What RESULTS.meta.json beside RESULTS.csv tells (units, settings, "
      "inputs)\n"
      "stands on it too.\n\n"
      "Examples:\n"
      "  tessera report results.csv\n"
      "  tessera report cold.csv warm.csv -o ambient.html\n"
      "  tessera report study/results.csv -o study.html");
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
  CLI::App app("Plays a simulation unit (FMI 2.0 co-simulation) and writes its outputs, as CSV or numpy arrays.",
               "tessera");
  app.set_version_flag("--version", "tessera " TESSERA_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Exit codes: 0 done, 1 validate or a comparison has findings, 2 usage, 3 error of the unit, 4 non-finite\n"
      "output, 5 file or archive, 124 time-out, 130 cancelled (SIGINT), 143 terminated (SIGTERM).\n\n"
      "Examples:\n"
      "  tessera run --stop-time 600\n"
      "  tessera info --filter 'stack*'\n"
      "  tessera validate Tessera.fmu\n"
      "  tessera compare new.csv old.csv\n"
      "  tessera props Moist_Air h --T 300 --P 101325 --w 0.01\n"
      "'tessera COMMAND --help' tells more.");

  RunCommand run_command(app);

  InfoOptions info_options;
  CLI::App& info_command = *app.add_subcommand("info", "list the variables of the unit");
  add_unit(info_command, info_options.unit);
  info_command
      .add_option("--filter", info_options.filters,
                  "list only variables whose names match, with *, ? and [...] (repeatable)")
      ->type_name("PATTERN")
      ->allow_extra_args(false);
  info_command.add_option("--causality", info_options.causality, "list only variables of this causality")
      ->type_name("CAUSALITY")
      ->check(CLI::IsMember(std::vector<std::string>{"parameter", "input", "output", "local", "independent"}));
  CLI::Option* const as_json = info_command.add_flag("--json", info_options.as_json, "print JSON instead of a table");
  info_command.add_flag("--names", info_options.names_only, "print the names alone")->excludes(as_json);
  info_command.footer(
      "Examples:\n"
      "  tessera info --filter '*_set' --filter '*_gate'\n"
      "  tessera info --causality output --names\n"
      "  tessera info --json other.fmu");

  fs::path validated;
  CLI::App& validate_command = *app.add_subcommand("validate", "check the unit's archive, description and binary");
  add_unit(validate_command, validated);
  validate_command.footer(
      "Every problem is a line on standard output; the exit code is then 1.\n\n"
      "Examples:\n  tessera validate\n  tessera validate other.fmu");

  CompareOptions compare_options;
  CLI::App& compare_command = *app.add_subcommand("compare", "compare results with a reference, signal by signal");
  add_compare_options(compare_command, compare_options);

  ReportOptions report_options;
  CLI::App& report_command = *app.add_subcommand("report", "make a page with charts of results");
  add_report_options(report_command, report_options);

  PropsOptions props_options;
  CLI::App& props_command = *app.add_subcommand("props", "compute properties of a fluid");
  add_props_options(props_command, props_options);

  std::string shell;
  CLI::App& completion_command = *app.add_subcommand("completion", "print a script that completes this command line");
  completion_command.add_option("SHELL", shell, "the shell that it is for")
      ->type_name("SHELL")
      ->check(CLI::IsMember(completion_shells()))
      ->required();
  completion_command.footer(
      "Examples:\n"
      "  source <(tessera completion bash)\n"
      "  tessera completion zsh > ~/.zfunc/_tessera\n"
      "  tessera completion fish > ~/.config/fish/completions/tessera.fish");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return mapped(app, error);
  }

  if (run_command.is_parsed()) return run_command.run();
  if (compare_command.parsed()) return compare(compare_options);
  if (validate_command.parsed()) return validate(validated);
  if (report_command.parsed()) {
    report(report_options);
    return ExitCode::kOk;
  }
  if (props_command.parsed()) {
    props(props_options);
    return ExitCode::kOk;
  }
  if (completion_command.parsed()) {
    std::cout << completion_script(app, shell);
    return ExitCode::kOk;
  }
  info(info_options);
  return ExitCode::kOk;
}

}  // namespace runner
