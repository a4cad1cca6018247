#pragma once

namespace runner {

/// What the program answers to its caller.
enum class ExitCode {
  kOk = 0,
  kFindings = 1,      ///< validate: the unit has at least one problem; comparison: the results do not agree
  kUsage = 2,         ///< the command line asks for something that does not exist or cannot be
  kUnitError = 3,     ///< the unit refused a call or reported an error
  kNonFinite = 4,     ///< an output was not a finite number
  kFile = 5,          ///< a file, the archive or a binary cannot be read, loaded or written
  kTimedOut = 124,    ///< the run's time-out
  kCancelled = 130,   ///< SIGINT
  kTerminated = 143,  ///< SIGTERM
};

}  // namespace runner
