#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

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

/// Takes a step and notes how it fails, so that the steps after it are still taken.
template <class Step>
void attempt(std::vector<Error>& failures, const Step& step) {
  try {
    step();
  } catch (const Error& error) {
    failures.push_back(error);
  } catch (const std::bad_alloc&) {
    failures.emplace_back(ExitCode::kFile, "the memory does not suffice");
  } catch (const std::exception& error) {  // the file system
    failures.emplace_back(ExitCode::kFile, error.what());
  }
}

}  // namespace runner
