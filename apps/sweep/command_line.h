#pragma once

#include "apps/runner/exit_codes.h"
#include "apps/sweep/crew.h"

namespace sweep {

/// Reads the command line and does what it asks.
/// @throws runner::Error if that is not possible
runner::ExitCode run_command_line(int argc, char** argv, Crew& crew);

}  // namespace sweep
