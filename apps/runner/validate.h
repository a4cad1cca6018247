#pragma once

#include <filesystem>

#include "apps/runner/exit_codes.h"

namespace runner {

/// Checks the unit: the archive and its entries, the model description, the binary for this machine, and whether the
/// two agree. Prints each problem on a line of its own, or one line that says what was found in order.
/// @return kOk or kFindings
/// @throws Error kFile if the file cannot be opened as an archive
ExitCode validate(const std::filesystem::path& unit);

}  // namespace runner
