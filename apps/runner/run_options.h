#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "apps/runner/compare.h"
#include "apps/runner/progress.h"
#include "apps/runner/unit_log.h"

namespace runner {

/// What the command line or a configuration file says about a run; times and values are still text.
struct RunOptions {
  std::filesystem::path unit;
  std::optional<std::string> stop_time, output_interval;  ///< absent: as the model description proposes
  std::optional<std::string> record_from;                 ///< absent: from time 0 on
  std::optional<std::string> timeout;                     ///< seconds of wall time; absent: none
  std::vector<std::string> start_values;                  ///< NAME=VALUE
  std::vector<std::string> changes;                       ///< TIME:NAME=VALUE
  std::vector<std::string> output_variables;              ///< patterns; empty: all outputs
  std::filesystem::path output_file = "results.csv";
  std::filesystem::path reference_file;  ///< results to compare with; empty: none
  Tolerances tolerances;                 ///< of that comparison
  LogLevel log_level = LogLevel::kWarning;
  std::string log_file;
  ProgressMode progress = ProgressMode::kAuto;
  bool keep_gates = false;
  bool is_quiet = false;
  bool allow_non_finite = false;
  bool show_stats = false;
};

/// The unit that is shipped with the programs: it lies beside them.
std::filesystem::path default_unit();

/// A setting with a fixed set of values.
template <class Value>
struct Choice {
  Value* target;
  std::vector<std::pair<std::string, Value>> values;  ///< with their names
};

/// A setting that may be given several times.
struct Repeated {
  enum Form { kTexts, kStartValues, kChanges };
  std::vector<std::string>* target;
  Form form;          ///< of the entries in a configuration file
  bool adds_to_file;  ///< does the command line add to those of the file, or replace them?
};

/// A setting of a run: the option --KEY of the command line, and KEY in a configuration file.
struct RunSetting {
  using Target = std::variant<bool*, double*, std::optional<std::string>*, std::string*, std::filesystem::path*,
                              Repeated, Choice<LogLevel>, Choice<ProgressMode>>;
  const char* key;
  const char* type_name;  ///< of the value, in the help
  Target target;          ///< a double is a tolerance, an optional text a number of seconds
  const char* help;
};

inline constexpr const char* kUnitKey = "unit";  ///< on the command line an argument without a name

/// All settings, to be read into `options`; the same ones in the same order at each call.
std::vector<RunSetting> run_settings(RunOptions& options);

/// The settings of a comparison, which are also settings of a run.
std::vector<RunSetting> tolerance_settings(Tolerances& tolerances);

/// Copies a setting from one RunOptions to the same setting of another; for a setting that adds to the file, behind
/// what is there.
void overlay(const RunSetting& from, const RunSetting& to);

}  // namespace runner
