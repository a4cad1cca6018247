#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/runner/exit_codes.h"
#include "apps/runner/unit_log.h"

namespace runner {

/// What the command line says about a run; times and values are still text.
struct RunOptions {
  std::filesystem::path unit;
  std::optional<std::string> stop_time, output_interval;  ///< absent: as the model description proposes
  std::vector<std::string> start_values;                  ///< NAME=VALUE
  std::vector<std::string> changes;                       ///< TIME:NAME=VALUE
  std::vector<std::string> output_variables;              ///< patterns; empty: all outputs
  std::filesystem::path output_file = "results.csv";
  LogLevel log_level = LogLevel::kWarning;
  std::string log_file;
  bool keep_gates = false;
  bool is_quiet = false;
  bool allow_non_finite = false;
};

/// Plays the unit from time 0 to the stop time and writes its outputs. Prints a summary on standard output.
/// @return kOk, or why the run ended early; what it had written until then is in the output file
/// @throws Error if the run could not begin
ExitCode run(const RunOptions& options);

}  // namespace runner
