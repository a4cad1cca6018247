#pragma once

#include <stdexcept>
#include <string>

#include "apps/runner/exit_codes.h"

namespace runner {

/// Ends the command: `what()` is the line for the user (without the leading "tessera: "), `code()` the exit code.
class Error : public std::runtime_error {
 public:
  Error(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace runner
