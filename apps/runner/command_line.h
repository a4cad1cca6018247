#pragma once

#include "apps/runner/exit_codes.h"

namespace runner {

/// Reads the command line and does what it asks.
/// @throws Error if that is not possible
ExitCode run_command_line(int argc, char** argv);

}  // namespace runner
