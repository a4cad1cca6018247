#include "apps/runner/run_options.h"

#include <system_error>

namespace runner {

std::filesystem::path default_unit() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? "Tessera.fmu" : program.parent_path() / "Tessera.fmu";
}

std::vector<RunSetting> tolerance_settings(Tolerances& tolerances) {
  return {
      {"rtol", "NUMBER", &tolerances.rtol, "allowed deviation relative to the reference; without it 1e-6"},
      {"atol", "NUMBER", &tolerances.atol, "allowed deviation in any case, in the signal's unit; without it 1e-9"},
      {"tolerance", "PATTERN=rtol:R,atol:A", Repeated{&tolerances.per_signal, Repeated::kTexts, true},
       "others for the signals that match, one or both (repeatable, the last match counts)"},
  };
}

std::vector<RunSetting> run_settings(RunOptions& options) {
  std::vector<RunSetting> settings = {
      {kUnitKey, "FILE", &options.unit, "the unit, a .fmu file; without it the Tessera.fmu beside this program"},
      {"stop-time", "SECONDS", &options.stop_time, "end of the run; without it as the unit proposes"},
      {"output-interval", "SECONDS", &options.output_interval, "time between rows; without it as the unit proposes"},
      {"record-from", "SECONDS", &options.record_from, "write the rows from this time on; without it from 0"},
      {"start-value", "NAME=VALUE", Repeated{&options.start_values, Repeated::kStartValues, true},
       "set a parameter before the run (repeatable, in the order given)"},
      {"set-at", "TIME:NAME=VALUE", Repeated{&options.changes, Repeated::kChanges, true},
       "set one during the run, for the next model step on (repeatable)"},
      {"keep-gates", "", &options.keep_gates, "leave the gates of parameters that are set as they are"},
      {"output-variable", "PATTERN", Repeated{&options.output_variables, Repeated::kTexts, false},
       "write only the outputs that match, with *, ? and [...] (repeatable); without it all"},
      {"output-file", "FILE", &options.output_file,
       "where the results go, as CSV or, if it ends in .npz, as numpy arrays; without it results.csv"},
      {"show-stats", "", &options.show_stats, "print least, largest, mean and last value of each output"},
      {"reference-file", "FILE", &options.reference_file,
       "compare the outputs with this CSV file, as 'tessera compare' does"},
  };
  for (RunSetting& setting : tolerance_settings(options.tolerances)) settings.push_back(std::move(setting));
  const std::vector<RunSetting> rest = {
      {"log-level", "LEVEL",
       Choice<LogLevel>{&options.log_level,
                        {{"error", LogLevel::kError},
                         {"warning", LogLevel::kWarning},
                         {"info", LogLevel::kInfo},
                         {"debug", LogLevel::kDebug}}},
       "how much of the unit's messages is told; without it warning"},
      {"log-file", "FILE", &options.log_file,
       "write the unit's messages there; standard error then gets warnings and errors only"},
      {"progress", "MODE",
       Choice<ProgressMode>{
           &options.progress,
           {{"auto", ProgressMode::kAuto}, {"json", ProgressMode::kJson}, {"none", ProgressMode::kNone}}},
       "how the progress is told on standard error: a bar or lines (auto), a JSON object a line, or not"},
      {"quiet", "", &options.is_quiet, "no progress on standard error, as --progress=none"},
      {"timeout", "SECONDS", &options.timeout, "end the run after this wall time; its rows are kept"},
      {"allow-non-finite", "", &options.allow_non_finite, "go on when an output is not a finite number"},
  };
  settings.insert(settings.end(), rest.begin(), rest.end());
  return settings;
}

namespace {

template <class Value>
void copy(Value* from, Value* to) {
  *to = *from;
}
template <class Value>
void copy(const Choice<Value>& from, const Choice<Value>& to) {
  *to.target = *from.target;
}
void copy(const Repeated& from, const Repeated& to) {
  if (!to.adds_to_file) to.target->clear();
  to.target->insert(to.target->end(), from.target->begin(), from.target->end());
}

}  // namespace

void overlay(const RunSetting& from, const RunSetting& to) {
  std::visit([&](const auto& source) { copy(source, std::get<std::decay_t<decltype(source)>>(to.target)); },
             from.target);
}

}  // namespace runner
