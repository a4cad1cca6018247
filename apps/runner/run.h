#pragma once

#include "apps/runner/exit_codes.h"
#include "apps/runner/run_options.h"

namespace runner {

/// Plays the unit from time 0 to the stop time and writes its outputs, and beside them how they came about. Prints a
/// summary on standard output.
/// @return kOk, kFindings if the outputs do not agree with the reference, or why the run ended early; what it had
///   written until then is in the output file
/// @throws Error if the run could not begin
ExitCode run(const RunOptions& options);

}  // namespace runner
