#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "apps/runner/exit_codes.h"
#include "apps/runner/model_description.h"
#include "apps/runner/run_options.h"
#include "apps/runner/simulation.h"
#include "apps/runner/summary.h"

namespace runner {

/// How a result came about, as its file tells it.
struct RunRecord {
  const RunOptions& options;
  const ModelDescription& description;
  const Plan& plan;
  const Played& played;
  const Summary& summary;
  std::chrono::system_clock::time_point started;
  double wall_time = 0.0;  ///< s
  std::uint64_t rows = 0;
  std::size_t warnings = 0, errors = 0;  ///< messages of the unit
  ExitCode exit_code = ExitCode::kOk;
};

/// The file beside a result that tells how it came about: the ending is .meta.json instead.
std::filesystem::path record_path(const std::filesystem::path& result);

/// The record as JSON, with a line end behind it. Times are in seconds, values in the unit of their variable; what is
/// not finite is null.
std::string record_text(const RunRecord& record);

/// What a record says about the unit, the program, and a moment (ISO 8601, UTC).
nlohmann::ordered_json unit_record(const std::filesystem::path& unit, const ModelDescription& description);
nlohmann::ordered_json runner_record();
std::string utc_text(std::chrono::system_clock::time_point moment);

}  // namespace runner
