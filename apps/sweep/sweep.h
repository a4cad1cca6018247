#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "apps/runner/exit_codes.h"
#include "apps/runner/run_options.h"
#include "apps/sweep/crew.h"

namespace sweep {

/// What the command line says about a sweep.
struct SweepOptions {
  std::filesystem::path plan, folder;
  runner::RunOptions run;          ///< settings for all points
  std::vector<std::string> given;  ///< keys of those settings that the command line has
  std::vector<std::string> keep;   ///< SIGNAL=TAKE, or names of scalars
  bool yes = false, restart = false, retry_failed = false, is_dry = false, is_quiet = false;
};

/// Plays the points of the plan that are not done yet and writes the table of all. Prints a summary on standard output.
/// @return kOk, kFindings if points failed, kCancelled or kTerminated
/// @throws runner::Error if the plan cannot be played or files cannot be written
runner::ExitCode sweep(const SweepOptions& options, Crew& crew);

}  // namespace sweep
